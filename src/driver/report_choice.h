#pragma once

#include "platform/platform.h"
#include "profile/profile_tables.h"
#include "profile/run_options.h"
#include "value/output.h"

namespace ptick {

/// Runs the one report that the options choose, the first that applies: all reports (-A: ancillary,
/// shared objects, PERFORMed programs, subroutines), -p, -a, -k, -o, -s, else the per-line report.
void PrintChosenReport(const ProfileTables& tables, const RunOptions& options, Platform& platform,
                       Output& output);

}  // namespace ptick
