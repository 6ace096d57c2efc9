#pragma once

#include <memory>
#include <memory_resource>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/record_file.h"
#include "profile/merge/profile_merge.h"
#include "profile/parse/read_options.h"
#include "profile/tables/profile_tables.h"
#include "records/read_problem.h"

namespace ptick {

/// Reads one profile, front to back, into empty tables. `name` is what the problem and the tables
/// call it. The problem that is returned when it cannot be read to its end, or holds a line of an
/// unknown record type, leaves the tables filled in part.
std::optional<ReadProblem> ReadProfile(std::unique_ptr<RecordReader> record, std::string_view name,
                                       const ReadOptions& options, ProfileTables& tables);

/// The same for the profile of that name, "DIRECTORY/RECORD" or "RECORD".
std::optional<ReadProblem> LoadProfile(std::string_view name, RecordFiles& files,
                                       const ReadOptions& options, ProfileTables& tables);

/// Several profiles merged into one.
struct MergedProfile {
  ProfileMerge merge;
  std::string first_name;  ///< of the first profile that was read; empty when none was

  /// Set when the merge could not be finished: a profile failed after some of its lines were
  /// merged, and a profile before it, a pipe, cannot be read again for a merge without it.
  bool is_broken = false;
};

/// Merges the profiles of these names, in order, each whole or not at all. One that cannot be
/// opened or read to its end is told to `tell` and left out; where lines of it had been merged
/// already, the merge begins again without it.
///
/// Threads: where `threads` allows more than one, `files` and `tell` are called by one at a time,
/// but by any of them.
MergedProfile MergeProfileFiles(const std::vector<std::string>& names, RecordFiles& files,
                                std::pmr::memory_resource* memory, const ProblemHandler& tell,
                                const ThreadPlan& threads = {});

/// Takes the lines of an open record into a merge. Where the record cannot be read to its end, the
/// problem is returned, and lines of it may have been taken.
std::optional<ReadProblem> MergeRecord(std::unique_ptr<RecordReader> record, std::string_view name,
                                       ProfileMerge& merge);

/// The tables of a merged profile, named after its first one: "run1 ...". The problem that is
/// returned at a line of an unknown record type counts merged lines.
std::optional<ReadProblem> ReadMergedProfile(MergedProfile&& merged, const ReadOptions& options,
                                             ProfileTables& tables);

}  // namespace ptick
