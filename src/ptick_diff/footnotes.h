// What is to be known of a table: what it leaves out, and how far it may be trusted.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "ptick_diff/diff.h"

namespace ptick::compare {

/// Of `rows`, which are places in Rows(), the first `shown` are in the table; all other rows of the
/// comparison are within noise.
std::vector<std::string> Footnotes(const Diff& diff, std::span<const std::uint32_t> rows,
                                   std::size_t shown);

}  // namespace ptick::compare
