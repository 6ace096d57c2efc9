#pragma once

#include "profile/profile_tables.h"
#include "profile/run_options.h"
#include "value/output.h"

namespace ptick {

/// The subroutines report (-s): one line per recorded call with its count and the subroutine
/// called, in the order of the tables, the largest count first. Never fails; a profile without
/// calls gives just the titles.
void ReportSubroutines(const ProfileTables& tables, const RunOptions& options, Output& output);

}  // namespace ptick
