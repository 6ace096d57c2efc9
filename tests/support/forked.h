#pragma once

#include <sys/types.h>

#include <functional>

namespace ptick::testing {

/// Runs `body` in a forked process with the usual signals, so that it may change what belongs to a
/// whole process, and returns what it returned, at most 255; 128 plus the signal number when a
/// signal ended it, SIGALRM after a minute. Failed expectations in it are printed and give 99.
int RunForked(const std::function<int()>& body);
/// The same for a body that is nothing but expectations: 0 when they hold.
int CheckForked(const std::function<void()>& body);

/// Forks, and returns the child's id at once. It is the caller's to wait for.
pid_t StartForked(const std::function<int()>& body);

/// Waits for the end of a process and returns its status as above.
int AwaitEnd(pid_t process);

}  // namespace ptick::testing
