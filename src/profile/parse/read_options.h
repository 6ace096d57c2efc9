#pragma once

#include <memory_resource>

#include "parallel/thread_plan.h"

namespace ptick {

/// What a reader of profiles keeps of them. What is not kept costs no memory; it is counted all the
/// same.
struct ReadOptions {
  bool keep_performs = true;  ///< each PERFORM, not only how often each command was performed
  bool keep_callers = true;   ///< of subroutine calls
  bool keep_inputs = true;    ///< what was typed, and when

  /// For tables that may get big; must outlive the load.
  std::pmr::memory_resource* table_memory = std::pmr::get_default_resource();

  /// How many threads read. The tables do not depend on it.
  ThreadPlan threads = {};
};

}  // namespace ptick
