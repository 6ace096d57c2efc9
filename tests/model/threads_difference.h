#pragma once

#include <string>
#include <vector>

#include "parallel/thread_plan.h"
#include "support/memory_platform.h"

namespace ptick::model {

/// A run of the program on profiles named run1, run2 and so on.
struct ThreadsRun {
  std::vector<std::string> options;
  std::vector<MemoryPlatform::Record> profiles;
};

/// How what a run prints, says and ends with differs between one thread and this plan; empty when
/// it does not.
std::string ThreadsDifference(const ThreadsRun& run, const ThreadPlan& plan);

/// A plan in words.
std::string PlanText(const ThreadPlan& plan);

}  // namespace ptick::model
