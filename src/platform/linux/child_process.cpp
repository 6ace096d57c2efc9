#include "platform/linux/child_process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>

namespace ptick {
namespace {

constexpr int kNotStarted = 127;

// What the child does before it becomes the program.
class SpawnPlan {
 public:
  explicit SpawnPlan(const ChildSetup& setup) {
    ::posix_spawn_file_actions_init(&actions_);
    if (setup.Input >= 0) {
      ::posix_spawn_file_actions_adddup2(&actions_, setup.Input, STDIN_FILENO);
    } else {
      ::posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    }
    if (setup.Output >= 0) {
      ::posix_spawn_file_actions_adddup2(&actions_, setup.Output, STDOUT_FILENO);
      ::posix_spawn_file_actions_adddup2(&actions_, setup.Output, STDERR_FILENO);
    }
    ::posix_spawnattr_init(&attributes_);
    sigset_t signals = {};
    ::sigemptyset(&signals);
    ::posix_spawnattr_setsigmask(&attributes_, &signals);
    ::sigaddset(&signals, SIGPIPE);
    ::sigaddset(&signals, SIGXFSZ);
    ::posix_spawnattr_setsigdefault(&attributes_, &signals);
    const int group = setup.OwnGroup ? POSIX_SPAWN_SETPGROUP : 0;
    ::posix_spawnattr_setflags(
        &attributes_, static_cast<short>(POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | group));
  }
  SpawnPlan(const SpawnPlan&) = delete;
  SpawnPlan& operator=(const SpawnPlan&) = delete;
  ~SpawnPlan() {
    ::posix_spawnattr_destroy(&attributes_);
    ::posix_spawn_file_actions_destroy(&actions_);
  }

  std::optional<pid_t> Start(const std::string& program, std::vector<std::string> arguments) const {
    std::vector<char*> words;
    words.reserve(arguments.size() + 1);
    for (std::string& argument : arguments) {
      words.push_back(argument.data());
    }
    words.push_back(nullptr);
    pid_t child = 0;
    if (::posix_spawnp(&child, program.c_str(), &actions_, &attributes_, words.data(), environ) !=
        0) {
      return std::nullopt;
    }
    return child;
  }

 private:
  posix_spawn_file_actions_t actions_ = {};
  posix_spawnattr_t attributes_ = {};
};

int ExitStatus(int wait_status) {
  return WIFSIGNALED(wait_status) ? 128 + WTERMSIG(wait_status) : WEXITSTATUS(wait_status);
}

bool HoldsZeroByte(const std::string& text) { return text.find('\0') != std::string::npos; }

}  // namespace

std::optional<pid_t> StartChild(const std::string& program,
                                const std::vector<std::string>& arguments,
                                const ChildSetup& setup) {
  if (HoldsZeroByte(program) || std::any_of(arguments.begin(), arguments.end(), HoldsZeroByte)) {
    return std::nullopt;
  }
  return SpawnPlan(setup).Start(program, arguments);
}

std::optional<int> PollChild(pid_t child) {
  int wait_status = 0;
  const pid_t ended = ::waitpid(child, &wait_status, WNOHANG);
  if (ended == 0) {
    return std::nullopt;
  }
  return ended == child ? ExitStatus(wait_status) : kNotStarted;
}

int WaitForChild(pid_t child) {
  int wait_status = 0;
  pid_t ended = -1;
  do {
    ended = ::waitpid(child, &wait_status, 0);
  } while (ended < 0 && errno == EINTR);
  return ended == child ? ExitStatus(wait_status) : kNotStarted;
}

}  // namespace ptick
