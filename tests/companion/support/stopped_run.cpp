#include "companion/support/stopped_run.h"

#include <fcntl.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>

#include "companion/support/sample_run.h"

namespace ptick::companion::testing {

StoppedRun::StoppedRun(const std::vector<std::string>& command, int signal, int moment)
    : signal_(signal), moment_(moment) {
  process_ = StartProgram(command, [] {
    const int nothing = ::open("/dev/null", O_RDWR | O_CLOEXEC);
    ::dup2(nothing, STDOUT_FILENO);
    ::dup2(nothing, STDERR_FILENO);
    // Leaks cannot be looked for in a process that is being traced, and counts of coverage must not
    // be damaged by its end.
    ::setenv("ASAN_OPTIONS", "detect_leaks=0", 1);
    ::setenv("GCOV_PREFIX", "/dev/null", 1);
    if (::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) {
      ::_exit(kNoTracing);
    }
    ::raise(SIGSTOP);
  });
  Follow();
}

void StoppedRun::Follow() {
  int stop = 0;
  while (::waitpid(process_, &stop, 0) == process_) {
    if (WIFEXITED(stop) || WIFSIGNALED(stop)) {
      status_ = WIFSIGNALED(stop) ? 128 + WTERMSIG(stop) : WEXITSTATUS(stop);
      return;
    }
    int delivered = 0;
    if (WSTOPSIG(stop) == (SIGTRAP | 0x80)) {
      AtSystemCall();
    } else if (WSTOPSIG(stop) == SIGSTOP) {
      ::ptrace(PTRACE_SETOPTIONS, process_, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
    } else if (WSTOPSIG(stop) != SIGTRAP) {
      delivered = WSTOPSIG(stop);
    }
    ::ptrace(PTRACE_SYSCALL, process_, nullptr, delivered);
  }
}

void StoppedRun::AtSystemCall() {
  __ptrace_syscall_info call = {};
  ::ptrace(PTRACE_GET_SYSCALL_INFO, process_, sizeof call, &call);
  if (!next_moment_ && call.op == PTRACE_SYSCALL_INFO_ENTRY && call.entry.nr == SYS_openat &&
      (call.entry.args[2] & O_EXCL) != 0) {
    next_moment_ = 0;
  }
  if (next_moment_ && (*next_moment_)++ == moment_) {
    ::kill(process_, signal_);
    was_signalled_ = true;
  }
}

}  // namespace ptick::companion::testing
