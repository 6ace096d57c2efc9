#pragma once

#include <optional>

#include "profile/parse/read_options.h"
#include "profile/tables/profile_tables.h"
#include "records/line_blocks.h"
#include "records/read_problem.h"

namespace ptick {

/// Reads profile lines to their end and fills the tables. Lines that do not begin with "PROFILE:"
/// are passed over. At a line of an unknown record type it ends early: the problem that is returned
/// then has the kind, the line's number and the text, but no name.
std::optional<ReadProblem> ParseProfileLines(LineBlocks& lines, const ReadOptions& options,
                                             ProfileTables& tables);

}  // namespace ptick
