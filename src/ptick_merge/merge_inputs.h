// Merges the inputs of ptick-merge.
#pragma once

#include <cstddef>
#include <memory_resource>

#include "companion/inputs/profile_inputs.h"
#include "companion/messages.h"
#include "companion/progress.h"
#include "parallel/thread_plan.h"
#include "profile/merge/profile_merge.h"
#include "ptick_merge/name_list.h"

namespace ptick::companion {

/// What a merge is made with.
struct MergeTools {
  InputOpener open;
  Progress& progress;
  /// For tables; outlives the merge.
  std::pmr::memory_resource* memory;
  ThreadPlan threads = {};
};

/// Merges all inputs, in their order, one open at a time. Throws Trouble at the first one that
/// cannot be read to its end or holds a record of no known type.
ProfileMerge MergeAll(const NameList& names, const MergeTools& tools);

struct GoodMerge {
  ProfileMerge merge;
  /// How many inputs are not in it.
  std::size_t left_out = 0;
};

/// The same of those inputs that are good; each other one is told and left out whole. Throws
/// Trouble when none is left. On one thread: before the end of an input nobody knows whether its
/// lines count.
GoodMerge MergeGood(const NameList& names, const MergeTools& tools, Messages& messages);

}  // namespace ptick::companion
