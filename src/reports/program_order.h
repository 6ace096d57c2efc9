#pragma once

#include <cstddef>
#include <vector>

#include "profile/tables/profile_tables.h"
#include "reports/run_options.h"

namespace ptick {

/// The rows of `Details`, one per program, in the order in which the programs are shown: by name,
/// or with -u by their total ticks, equal totals in reverse order of first appearance.
std::vector<std::size_t> ProgramOrder(const TickTable& details, const RunOptions& options);

}  // namespace ptick
