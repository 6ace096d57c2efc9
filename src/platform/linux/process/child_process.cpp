#include "platform/linux/process/child_process.h"

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

// What the child does before it becomes the program. The plan itself needs memory; a child for
// which some of it could not be planned would use the wrong streams, so none is started then.
class SpawnPlan {
 public:
  explicit SpawnPlan(const ChildSetup& setup) {
    Note(::posix_spawn_file_actions_init(&actions_));
    Note(::posix_spawnattr_init(&attributes_));
    PlanStreams(setup);
    PlanSignals(setup.own_group);
  }
  SpawnPlan(const SpawnPlan&) = delete;
  SpawnPlan& operator=(const SpawnPlan&) = delete;
  ~SpawnPlan() {
    ::posix_spawnattr_destroy(&attributes_);
    ::posix_spawn_file_actions_destroy(&actions_);
  }

  // 0 or the error number.
  int Start(const std::string& program, std::vector<std::string> arguments, pid_t& child) const {
    if (error_ != 0) {
      return error_;
    }
    std::vector<char*> words;
    words.reserve(arguments.size() + 1);
    for (std::string& argument : arguments) {
      words.push_back(argument.data());
    }
    words.push_back(nullptr);
    return ::posix_spawnp(&child, program.c_str(), &actions_, &attributes_, words.data(), environ);
  }

 private:
  void PlanStreams(const ChildSetup& setup) {
    if (setup.input >= 0) {
      Note(::posix_spawn_file_actions_adddup2(&actions_, setup.input, STDIN_FILENO));
    } else {
      Note(::posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0));
    }
    if (setup.output >= 0) {
      Note(::posix_spawn_file_actions_adddup2(&actions_, setup.output, STDOUT_FILENO));
      Note(::posix_spawn_file_actions_adddup2(&actions_, setup.output, STDERR_FILENO));
    }
  }

  void PlanSignals(bool own_group) {
    sigset_t signals = {};
    ::sigemptyset(&signals);
    Note(::posix_spawnattr_setsigmask(&attributes_, &signals));
    ::sigaddset(&signals, SIGPIPE);
    ::sigaddset(&signals, SIGXFSZ);
    Note(::posix_spawnattr_setsigdefault(&attributes_, &signals));
    const int group = own_group ? POSIX_SPAWN_SETPGROUP : 0;
    Note(::posix_spawnattr_setflags(
        &attributes_, static_cast<short>(POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | group)));
  }

  void Note(int error) { error_ = error_ != 0 ? error_ : error; }

  posix_spawn_file_actions_t actions_ = {};
  posix_spawnattr_t attributes_ = {};
  int error_ = 0;  // the first one
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
    errno = EINVAL;
    return std::nullopt;
  }
  pid_t child = 0;
  const int error = SpawnPlan(setup).Start(program, arguments, child);
  if (error != 0) {
    errno = error;
    return std::nullopt;
  }
  return child;
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
