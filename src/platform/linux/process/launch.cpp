#include "platform/linux/process/launch.h"

#include <fcntl.h>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <string_view>

// The child shares the memory of its parent, which waits until the child has become the program: a
// big process need not be copied for a small one, and an error is simply left where the parent
// finds it. So the child allocates nothing and changes nothing else.

namespace ptick {

namespace {

constexpr std::size_t kStackSize = std::size_t{64} * 1024;
constexpr int kNotBecome = 127;
constexpr int kAboveScripts = 20;  // scripts and their shells use the descriptors below

// What the child needs, made ready by the parent.
struct Plan {
  std::vector<std::string> paths;  // where the program may be, in the order to try
  std::vector<char*> words;
  ChildStreams streams;
  int lifeline = -1;
  pid_t parent = 0;
  int error = 0;  // why the child did not become the program
};

// Keeps the lifeline open in the child and all that it starts, and has the system kill their group
// when the other end is closed.
void HoldLifeline(int lifeline) {
  int held = ::fcntl(lifeline, F_DUPFD, kAboveScripts);
  if (held < 0) {  // there may be so few descriptors only
    held = ::fcntl(lifeline, F_DUPFD, STDERR_FILENO + 1);
  }
  ::fcntl(held, F_SETOWN, -::getpid());
  ::fcntl(held, F_SETSIG, SIGKILL);
  ::fcntl(held, F_SETFL, O_ASYNC);
}

// For a parent that is killed before the lifeline is held. False when it has been already.
bool DieWithParent(pid_t parent) {
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  return ::getppid() == parent;
}

bool Connect(const ChildStreams& streams) {
  return ::dup2(streams.input, STDIN_FILENO) >= 0 &&
         (streams.output < 0 || (::dup2(streams.output, STDOUT_FILENO) >= 0 &&
                                 ::dup2(streams.output, STDERR_FILENO) >= 0));
}

// A group of its own is in the background, where a terminal would stop it and nobody continue it.
void SetSignals() {
  ::signal(SIGTTIN, SIG_IGN);
  ::signal(SIGTTOU, SIG_IGN);
  ::signal(SIGPIPE, SIG_DFL);
  ::signal(SIGXFSZ, SIG_DFL);
  sigset_t none = {};
  ::sigemptyset(&none);
  ::sigprocmask(SIG_SETMASK, &none, nullptr);
}

// Whether a program that could not be run here may be in another place.
bool MayBeElsewhere(int error) {
  constexpr std::array kErrors = {EACCES,       ENOENT, ENOTDIR, ELOOP,
                                  ENAMETOOLONG, ESTALE, ENODEV,  ETIMEDOUT};
  return std::find(kErrors.begin(), kErrors.end(), error) != kErrors.end();
}

// Returns only when the child cannot become the program: the error number, EACCES when that was met
// in any place.
int BecomeProgram(const Plan& plan) {
  int error = ENOENT;
  for (const std::string& path : plan.paths) {
    // Not execve, which coverage builds replace by a function that writes their counts, and so
    // changes the parent's memory.
    ::execveat(AT_FDCWD, path.c_str(), plan.words.data(), environ, 0);
    if (!MayBeElsewhere(errno)) {
      return errno;
    }
    error = error == EACCES ? EACCES : errno;
  }
  return error;
}

// The address sanitizer does not know the stack that this runs on.
__attribute__((no_sanitize("address"))) int RunChild(void* argument) {
  Plan& plan = *static_cast<Plan*>(argument);
  ::setpgid(0, 0);
  HoldLifeline(plan.lifeline);
  if (DieWithParent(plan.parent)) {
    if (Connect(plan.streams)) {
      SetSignals();
      plan.error = BecomeProgram(plan);
    } else {
      plan.error = errno;
    }
  }
  ::_exit(kNotBecome);
}

// Signals are held back so that no handler of the parent's runs in the child.
pid_t RunPlan(Plan& plan) {
  const auto stack = std::make_unique_for_overwrite<std::byte[]>(kStackSize);  // NOLINT(*-c-arrays)
  sigset_t all = {};
  sigset_t before = {};
  ::sigfillset(&all);
  ::pthread_sigmask(SIG_SETMASK, &all, &before);
  const pid_t child =
      ::clone(RunChild, stack.get() + kStackSize, CLONE_VM | CLONE_VFORK | SIGCHLD, &plan);
  plan.error = child < 0 ? errno : plan.error;
  ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
  return child;
}

std::vector<std::string> PlacesOf(const std::string& program) {
  if (program.empty() || program.find('/') != std::string::npos) {
    return {program};
  }
  const char* path = std::getenv("PATH");  // NOLINT(concurrency-mt-unsafe): nobody sets it
  std::string_view rest = path == nullptr ? "/bin:/usr/bin" : path;
  std::vector<std::string> places;
  for (bool more = true; more;) {
    const std::size_t end = std::min(rest.find(':'), rest.size());
    std::string place(rest.substr(0, end));
    place += place.empty() ? "" : "/";
    places.push_back(place += program);
    more = end < rest.size();
    rest.remove_prefix(more ? end + 1 : end);
  }
  return places;
}

bool HoldsZeroByte(const std::string& text) { return text.find('\0') != std::string::npos; }

}  // namespace

Launched Launch(const std::string& program, const std::vector<std::string>& arguments,
                const ChildStreams& streams, int lifeline) {
  if (HoldsZeroByte(program) || std::any_of(arguments.begin(), arguments.end(), HoldsZeroByte)) {
    return {.error = EINVAL};
  }
  std::vector<std::string> words = arguments;
  Plan plan = {.paths = PlacesOf(program),
               .words = {},
               .streams = streams,
               .lifeline = lifeline,
               .parent = ::getpid()};
  for (std::string& word : words) {
    plan.words.push_back(word.data());
  }
  plan.words.push_back(nullptr);
  const pid_t child = RunPlan(plan);
  if (plan.error == 0) {
    return {.child = child};
  }
  if (child > 0) {
    ::waitpid(child, nullptr, 0);
  }
  return {.error = plan.error};
}

}  // namespace ptick
