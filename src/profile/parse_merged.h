#pragma once

#include <optional>

#include "profile/merge/merged_keys.h"
#include "profile/parse/read_options.h"
#include "profile/tables/profile_tables.h"
#include "records/read_problem.h"

namespace ptick {

/// Reads the lines of a merged profile as ParseProfileLines does, to the same tables and the same
/// problem. Nearly all are trace entries, which become no text, and many are shared by as many
/// threads as `options` allow.
std::optional<ReadProblem> ParseMerged(const MergedKeys& keys, const ReadOptions& options,
                                       ProfileTables& tables);

}  // namespace ptick
