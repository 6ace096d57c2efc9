// Lines that are good to divide long texts at.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "compare/line_difference.h"

namespace ptick::compare {

/// Of the lines that both texts have exactly once as many as come in the same order in both, in
/// that order. Lines are numbers: equal lines, equal numbers.
std::vector<LinePair> CommonUniqueLines(std::span<const std::uint32_t> old_lines,
                                        std::span<const std::uint32_t> new_lines);

}  // namespace ptick::compare
