// What ptick-diff says when a build is over its bar.
#pragma once

#include <string>
#include <vector>

#include "ptick_diff/diff.h"
#include "ptick_diff/diff_options.h"

namespace ptick::compare {

/// A message for each thing that failed, none when all gates are passed. Of many rows the first ten
/// are named.
std::vector<std::string> GateMessages(const Diff& diff, const DiffOptions& options);

}  // namespace ptick::compare
