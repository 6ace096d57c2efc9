#pragma once

#include "output/output.h"
#include "profile/tables/profile_tables.h"
#include "reports/run_options.h"

namespace ptick {

/// The subroutines report (-s): one line per recorded call with its count and the subroutine
/// called, in the order of the tables, the largest count first. Never fails; a profile without
/// calls gives just the titles.
void ReportSubroutines(const ProfileTables& tables, const RunOptions& options, Output& output);

}  // namespace ptick
