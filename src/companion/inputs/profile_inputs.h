// Reads the profiles of a companion's command line.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "companion/inputs/checked_blocks.h"
#include "companion/inputs/input_opener.h"
#include "companion/progress.h"
#include "parallel/thread_plan.h"
#include "profile/merge/profile_merge.h"
#include "profile/parse/read_options.h"
#include "profile/tables/profile_tables.h"

namespace ptick::companion {

/// Is shown the tables of one profile.
using RunVisitor = std::function<void(const ProfileTables& run)>;

/// Each input is opened once, when its turn comes, read front to back and closed. Every line of it
/// is checked as it is read alone: what cannot be read, and a record of an unknown type, are
/// Trouble that names the input, and its own line. Tables are then filled in part.
///
/// Progress is told of the bytes read; it may be shared.
class ProfileInputs {
 public:
  ProfileInputs(InputOpener open, Progress& progress)
      : open_(std::move(open)), progress_(progress) {}

  /// Reads one profile as it is, into empty tables, which are named after it.
  void ReadOne(const std::string& name, const ReadOptions& options, ProfileTables& tables) const;

  /// Reads one side of a command line into empty tables, as `ptick` does: one profile as it is, two
  /// or more merged, in their order, and named after the first: "run1 ...". No names, no records.
  void Read(const std::vector<std::string>& names, const ReadOptions& options,
            ProfileTables& tables) const;

  /// Reads one side as Read does, and shows each profile of it by itself as well, in their order.
  /// There is one at least.
  void ReadEach(const std::vector<std::string>& names, const ReadOptions& options,
                ProfileTables& tables, const RunVisitor& visit) const;

  /// Takes the lines of all profiles into an empty merge, on as many threads as are worth it; where
  /// that throws, it has taken some of them. Any of the threads asks for names and opens inputs,
  /// one at a time.
  void Merge(const NextName& next_name, const ThreadPlan& threads, ProfileMerge& merge) const;

 private:
  /// Takes its lines into `merge` as well, where there is one.
  void ReadRun(const std::string& name, const ReadOptions& options, ProfileTables& tables,
               ProfileMerge* merge) const;

  InputOpener open_;
  Progress& progress_;
};

}  // namespace ptick::companion
