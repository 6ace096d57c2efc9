#pragma once

#include <cstdint>

#include "output/output.h"
#include "profile/tables/profile_tables.h"

namespace ptick {

/// Prints a row for each PERFORM that was kept, in recorded order: elapsed seconds, type, ticks,
/// CPU seconds, and the command cut at the page width.
void PrintPerformRows(const ProfileTables& tables, std::int64_t page_width, Output& output);

}  // namespace ptick
