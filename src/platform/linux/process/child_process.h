#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

namespace ptick {

/// How a child process is connected.
struct ChildSetup {
  int input = -1;          ///< its standard input; /dev/null when there is none
  int output = -1;         ///< its standard output and standard error; this process's when none
  bool own_group = false;  ///< whether it leads a process group of its own
};

/// Starts `program` with `arguments` (the first is the name it is told). A program without '/' is
/// looked for on PATH. The child has the usual signal dispositions, and no other descriptor of this
/// process. Nothing when it cannot be started, or when an argument holds a zero byte; errno tells
/// why.
std::optional<pid_t> StartChild(const std::string& program,
                                const std::vector<std::string>& arguments, const ChildSetup& setup);

/// The exit status of the child when it has ended (128 plus the signal number when a signal ended
/// it), nothing while it runs. A child that has been asked about with a result is gone.
std::optional<int> PollChild(pid_t child);

/// Waits until the child has ended and returns its exit status as above.
int WaitForChild(pid_t child);

}  // namespace ptick
