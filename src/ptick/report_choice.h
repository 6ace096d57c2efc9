#pragma once

#include "output/output.h"
#include "platform/platform.h"
#include "profile/tables/profile_tables.h"
#include "reports/run_options.h"

namespace ptick {

/// Runs the one report that the options choose, the first that applies: all reports (-A: ancillary,
/// shared objects, PERFORMed programs, subroutines), -p, -a, -k, -o, -s, else the per-line report.
void PrintChosenReport(const ProfileTables& tables, const RunOptions& options, Platform& platform,
                       Output& output);

}  // namespace ptick
