#include "companion/linux/opener.h"

#include <fcntl.h>
#include <spawn.h>
#include <unistd.h>

#include <array>
#include <optional>
#include <system_error>

namespace ptick::companion {

namespace {

constexpr const char* kOpener = "xdg-open";

// As a word that begins with "-" would be, a file of such a name must not be taken for an option.
std::string PathOf(const std::string& file) { return file.starts_with('-') ? "./" + file : file; }

int Start(const std::string& path) {
  posix_spawn_file_actions_t actions;
  posix_spawnattr_t attributes;
  if (const int error = ::posix_spawn_file_actions_init(&actions); error != 0) {
    return error;
  }
  ::posix_spawnattr_init(&attributes);
  // It is to outlive this program and its terminal, and to keep nobody waiting who reads from
  // these.
  ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
  ::posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  ::posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  ::posix_spawn_file_actions_adddup2(&actions, STDOUT_FILENO, STDERR_FILENO);
  std::string name = kOpener;
  std::string argument = path;
  const std::array<char*, 3> arguments = {name.data(), argument.data(), nullptr};
  pid_t process = 0;
  const int error =
      ::posix_spawnp(&process, kOpener, &actions, &attributes, arguments.data(), environ);
  ::posix_spawnattr_destroy(&attributes);
  ::posix_spawn_file_actions_destroy(&actions);
  return error;
}

}  // namespace

bool OpenForUser(const std::string& file, Messages& messages) {
  const int error = Start(PathOf(file));
  if (error != 0) {
    messages.Tell({.file = std::nullopt,
                   .line = std::nullopt,
                   .reason = std::string("cannot run ") + kOpener + ": " +
                             std::generic_category().message(error)});
  }
  return error == 0;
}

}  // namespace ptick::companion
