#pragma once

#include "platform/platform.h"

namespace ptick {

/// One run of the program, from the command line to its end. Returns the exit status of the
/// process. Where memory runs out, prints "ptick: out of memory" on the terminal and returns 1.
int RunPtick(Platform& platform);

}  // namespace ptick
