// A run of a program that gets a signal at a chosen moment.
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

namespace ptick::companion::testing {

/// Runs a program and sends it a signal at one of the moments at which it enters or leaves the
/// system. Its standard output and standard error are /dev/null.
class StoppedRun {
 public:
  /// The moments are counted from the one at which the temporary file is about to be made, which is
  /// number 0. The command begins with the path of the program.
  StoppedRun(const std::vector<std::string>& command, int signal, int moment);

  static constexpr int kNoTracing = 98;
  /// The exit status, or 128 plus the number of the signal.
  int Status() const { return status_; }
  /// Whether the process was still there at the moment.
  bool WasSignalled() const { return was_signalled_; }

 private:
  void Follow();
  void AtSystemCall();

  int signal_;
  int moment_;
  pid_t process_ = -1;
  std::optional<int> next_moment_;
  bool was_signalled_ = false;
  int status_ = -1;
};

}  // namespace ptick::companion::testing
