#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace ptick {

/// How long commands may take.
struct CaptureLimits {
  std::chrono::milliseconds PerCommand{5000};
  int LateInARow = 3;  ///< after so many late ones in a row no further command is run
};

/// Runs commands and hands out the first line of each as Platform::CaptureFirstLines says, one per
/// core at a time. A command that is still running at its limit is killed with all that it started;
/// it gives the first line when that was complete by then.
void CaptureCommandLines(const std::vector<std::vector<std::string>>& commands,
                         const std::function<void(std::string_view)>& done,
                         const CaptureLimits& limits = {});

}  // namespace ptick
