#pragma once

#include "output/output.h"
#include "platform/platform.h"
#include "profile/tables/profile_tables.h"
#include "reports/run_options.h"

namespace ptick {

/// Loads the profiles of the command line into the tables: one file as it is, two or more merged
/// into one profile, and without a name the default profile of the own port in the current
/// directory.
///
/// A single file that cannot be opened or read prints message 201 or 202 and throws Stop with
/// status 1; in a merge such a file is passed over after its message, and a merge of nothing prints
/// "No input files..." and throws Stop with status 2. See also ParseProfileLines.
void LoadProfileList(const RunOptions& options, Platform& platform, Output& output,
                     ProfileTables& tables);

}  // namespace ptick
