#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace ptick {

/// The number of processors that this process may use, at least 1.
std::size_t CountCores();

/// How far the running of commands may go.
struct CaptureLimits {
  std::chrono::nanoseconds time_per_command = std::chrono::seconds(5);
  int timeouts_in_a_row = 3;           ///< after these no further command is run
  std::size_t at_once = CountCores();  ///< how many commands run at the same time
};

/// Runs the commands, each started directly, its standard input empty, and calls `done` for each in
/// the order given with the first line that it wrote (at most 64 KiB of it). A command that cannot
/// be started or does not end in time gives an empty text; so does every command after several in a
/// row that did not end in time. What a command wrote does not depend on how it ended otherwise.
///
/// Memory is bounded, however many commands there are. When `done` throws, or a signal ends the
/// process during a wait, the commands that run are killed.
void CaptureOutputs(const std::vector<std::vector<std::string>>& commands,
                    const std::function<void(std::string_view)>& done,
                    const CaptureLimits& limits = {});

}  // namespace ptick
