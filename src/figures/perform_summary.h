#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "profile/tables/perform_table.h"

namespace ptick {

/// A distinct command and how often it was performed.
struct PerformedCommand {
  std::string_view command;  ///< points into the table
  std::uint64_t times = 0;
};

/// The distinct commands, told apart byte by byte. The most frequent comes first; commands of equal
/// counts come in ascending byte order.
std::vector<PerformedCommand> SummarizePerforms(const PerformTable& performs);

}  // namespace ptick
