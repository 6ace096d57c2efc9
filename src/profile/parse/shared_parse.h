#pragma once

#include <optional>

#include "profile/parse/read_options.h"
#include "profile/tables/profile_tables.h"
#include "records/line_blocks.h"
#include "records/read_problem.h"

namespace ptick {

/// Reads the lines of a record as ParseProfileLines does, to the same tables and the same problem.
/// A big record is shared by as many threads as `options` allow: one at a time reads blocks, all of
/// them take trace lines out of blocks, and what is left of each block is parsed in order, on the
/// caller's thread.
std::optional<ReadProblem> ParseRecordLines(RecordBlocks& lines, const ReadOptions& options,
                                            ProfileTables& tables);

}  // namespace ptick
