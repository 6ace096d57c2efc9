#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "value/field_list.h"

namespace ptick {

/// A distinct command and how often it was performed.
struct PerformedCommand {
  std::string_view command;  ///< points into the entries that were counted
  std::int64_t times = 0;
};

/// Counts the commands of `Performs` entries, told apart byte by byte. The most frequent comes
/// first; commands of equal counts come in ascending byte order. Takes n log n time and memory for
/// the distinct commands.
std::vector<PerformedCommand> SummarizePerforms(const FieldList& performs);

}  // namespace ptick
