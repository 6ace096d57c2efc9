#include "platform/linux/child_process.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace ptick {
namespace {

// What this process ignores, a child must not inherit.
void SetSignals(posix_spawnattr_t* attributes) {
  sigset_t none;
  ::sigemptyset(&none);
  ::posix_spawnattr_setsigmask(attributes, &none);
  sigset_t defaults;
  ::sigemptyset(&defaults);
  ::sigaddset(&defaults, SIGPIPE);
  ::sigaddset(&defaults, SIGXFSZ);
  ::posix_spawnattr_setsigdefault(attributes, &defaults);
}

}  // namespace

std::optional<pid_t> StartChild(const std::vector<std::string>& words, ChildStreams streams,
                                ChildGroup group) {
  std::vector<char*> arguments;
  for (const std::string& word : words) {
    arguments.push_back(const_cast<char*>(word.c_str()));  // NOLINT(*-const-cast): never written
  }
  if (arguments.empty()) {
    return std::nullopt;
  }
  arguments.push_back(nullptr);

  posix_spawn_file_actions_t actions;
  posix_spawnattr_t attributes;
  ::posix_spawn_file_actions_init(&actions);
  ::posix_spawnattr_init(&attributes);
  ::posix_spawn_file_actions_adddup2(&actions, streams.Input, STDIN_FILENO);
  ::posix_spawn_file_actions_adddup2(&actions, streams.Output, STDOUT_FILENO);
  ::posix_spawn_file_actions_adddup2(&actions, streams.Error, STDERR_FILENO);
  SetSignals(&attributes);
  int flags = POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF;
  if (group == ChildGroup::kOwn) {
    flags |= POSIX_SPAWN_SETPGROUP;
  }
  ::posix_spawnattr_setflags(&attributes, static_cast<short>(flags));

  pid_t child = 0;
  const int error =
      ::posix_spawnp(&child, arguments[0], &actions, &attributes, arguments.data(), environ);
  ::posix_spawnattr_destroy(&attributes);
  ::posix_spawn_file_actions_destroy(&actions);
  return error == 0 ? std::optional(child) : std::nullopt;
}

int WaitForChild(pid_t child) {
  int status = 0;
  while (::waitpid(child, &status, 0) < 0) {
    if (errno != EINTR) {
      return 127;
    }
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

}  // namespace ptick
