#pragma once

#include "platform/platform.h"

namespace ptick {

/// One run of the program, from the command line to its end. Returns the exit status of the
/// process.
int RunPtick(Platform& platform);

}  // namespace ptick
