#include "support/forked.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>

// Writes the coverage counts of a process that ends without the usual clean-up, if it keeps any.
extern "C" __attribute__((weak)) void __gcov_dump();  // NOLINT(*-reserved-identifier,*-naming)

namespace ptick::testing {

namespace {

constexpr int kFailedExpectation = 99;
constexpr unsigned kSecondsToLive = 60;

}  // namespace

pid_t StartForked(const std::function<int()>& body) {
  std::fflush(nullptr);
  const pid_t process = ::fork();
  if (process != 0) {
    return process;
  }
  ::alarm(kSecondsToLive);
  // Whatever the tests were started with: in the background, or to outlive a terminal.
  for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGTSTP, SIGCHLD}) {
    ::signal(signal, SIG_DFL);
  }
  sigset_t none = {};
  ::sigemptyset(&none);
  ::sigprocmask(SIG_SETMASK, &none, nullptr);
  const int status = body();
  std::fflush(nullptr);
  if (__gcov_dump != nullptr) {
    __gcov_dump();
  }
  ::_exit(::testing::Test::HasFailure() ? kFailedExpectation : status);
}

int AwaitEnd(pid_t process) {
  int status = 0;
  while (::waitpid(process, &status, 0) < 0 && errno == EINTR) {
  }
  return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

int RunForked(const std::function<int()>& body) { return AwaitEnd(StartForked(body)); }

int CheckForked(const std::function<void()>& body) {
  return RunForked(std::function<int()>([&body] {
    body();
    return 0;
  }));
}

}  // namespace ptick::testing
