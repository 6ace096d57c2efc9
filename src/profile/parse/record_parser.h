#pragma once

#include "output/output.h"
#include "profile/tables/profile_tables.h"
#include "records/line_blocks.h"
#include "reports/run_options.h"

namespace ptick {

/// Reads profile lines to their end and fills the tables; the trace and subroutine entries are in
/// their final order then. Lines that do not begin with "PROFILE:" are passed over. A line of an
/// unknown record type prints its number (counted from 1) and its text on the terminal and throws
/// Stop with status 2.
void ParseProfileLines(LineBlocks& lines, const RunOptions& options, Output& output,
                       ProfileTables& tables);

}  // namespace ptick
