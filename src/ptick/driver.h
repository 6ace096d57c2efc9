#pragma once

#include "parallel/thread_plan.h"
#include "platform/platform.h"

namespace ptick {

/// One run of the program, from the command line to its end. Returns the exit status of the
/// process. Where memory runs out, prints "ptick: out of memory" on the terminal and returns 1.
int RunPtick(Platform& platform);

/// The same with another plan than that which the platform's processors give.
int RunPtick(Platform& platform, const ThreadPlan& threads);

}  // namespace ptick
