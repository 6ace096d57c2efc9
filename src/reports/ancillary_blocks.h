#pragma once

#include "output/output.h"
#include "profile/tables/profile_tables.h"

namespace ptick {

/// The two blocks that end the ancillary report. The first line of a block has its label, the
/// others are indented by as much.

/// The resource usage of the profiled process, twelve lines; nothing when none was recorded. A
/// figure that was not recorded is empty. With a page size the resident set sizes are shown in
/// bytes, too.
void PrintResources(const ProfileTables& tables, Output& output);

/// How many file statements and PERFORMs the profiled run executed, six lines.
void PrintFileStatements(const ProfileTables& tables, Output& output);

}  // namespace ptick
