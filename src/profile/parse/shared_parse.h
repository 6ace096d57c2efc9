#pragma once

#include <optional>

#include "profile/parse/read_options.h"
#include "profile/tables/profile_tables.h"
#include "records/line_blocks.h"
#include "records/read_problem.h"

namespace ptick {

/// Reads the lines of a record as ParseProfileLines does, to the same tables and the same problem.
/// A big record is shared by as many threads as `options` allow: they take the trace lines, and
/// what is left is parsed in order, on the caller's thread. Of a regular file each thread reads
/// what it takes; what can be read front to back alone, one thread at a time reads.
///
/// Whether reading has failed is told by `lines`, or, where it was shared, by a problem that has
/// neither name nor place.
std::optional<ReadProblem> ParseRecordLines(RecordBlocks& lines, const ReadOptions& options,
                                            ProfileTables& tables);

}  // namespace ptick
