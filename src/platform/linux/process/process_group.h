#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/process/launch.h"
#include "platform/linux/unique_fd.h"

namespace ptick {

/// A child process with a process group of its own, in which all that it starts stays, too. The
/// group ends when the child has ended, with this object, and with this process, whatever ends that
/// (SIGKILL included). Only what leaves the group by itself, as a daemon does, lives on.
///
/// Threads: one, which must live as long as the child does.
class ProcessGroup {
 public:
  ProcessGroup() = default;
  ProcessGroup(const ProcessGroup&) = delete;
  ProcessGroup& operator=(const ProcessGroup&) = delete;
  ProcessGroup(ProcessGroup&& other) noexcept { *this = std::move(other); }
  ProcessGroup& operator=(ProcessGroup&& other) noexcept;
  ~ProcessGroup() { Kill(); }

  /// Starts a program as Launch does. Returns 0 or the error number. Called once.
  int Start(const std::string& program, const std::vector<std::string>& arguments,
            const ChildStreams& streams);

  bool IsRunning() const { return child_ > 0; }

  /// The exit status of the child when it has ended, nothing while it runs: 128 plus the signal
  /// number when a signal ended it.
  std::optional<int> Poll();
  /// Waits until the child has ended and returns its exit status.
  int Wait();
  /// Ends the group now, if it runs.
  void Kill();

 private:
  void End();

  pid_t child_ = 0;    // 0 when there is none any more
  int status_ = 0;     // of the child that has ended
  UniqueFd lifeline_;  // the writing end; only the group has the other
};

}  // namespace ptick
