#pragma once

#include "output/output.h"
#include "parallel/thread_plan.h"
#include "platform/platform.h"
#include "profile/tables/profile_tables.h"
#include "ptick/run_options.h"

namespace ptick {

/// Loads the profiles of the command line into the tables: one file as it is, two or more merged
/// into one profile, and without a name the default profile of this process's port in the current
/// directory.
///
/// A single file that cannot be opened or read to its end prints message 201 or 202 and throws Stop
/// with status 1. In a merge such a file is left out after its message; where the merge cannot do
/// without it, it throws Stop with status 1, and a merge of nothing prints "No input files..." and
/// throws Stop with status 2. A line of an unknown record type is printed with its number, and
/// throws Stop with status 2.
void LoadProfileList(const RunOptions& options, const ThreadPlan& threads, Platform& platform,
                     Output& output, ProfileTables& tables);

}  // namespace ptick
