#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

#include "platform/platform.h"

namespace ptick {

/// How far the running of commands may go. Those that hang do no work, so that many can be waited
/// for at once: 256 that all hang are over after 80 seconds.
struct CaptureLimits {
  std::chrono::nanoseconds time_to_first_line = std::chrono::seconds(10);
  std::size_t at_once = 32;  ///< how many commands run at the same time, at least 1
};

/// Runs the commands, each started directly, its standard input empty, and gives the first line
/// that each wrote, at most 64 KiB of it. A line counts as soon as it is complete, whatever the
/// command does afterwards, and however it ends; one that is not complete in time gives what there
/// is. Every command is run; where the system has not enough for so many at once, fewer run.
///
/// No command outlives the call, whatever ends it, the end of this process included.
///
/// Threads: one at a time; signals that another thread takes are not seen.
FirstLines CaptureFirstLines(const std::vector<std::vector<std::string>>& commands,
                             const CaptureLimits& limits = {});

}  // namespace ptick
