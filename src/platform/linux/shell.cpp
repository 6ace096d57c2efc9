#include "platform/linux/shell.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <optional>

#include "platform/linux/child_process.h"
#include "platform/linux/terminal.h"
#include "platform/linux/unique_fd.h"

namespace ptick {
namespace {

// On the line of the command, so that the shell counts lines in its messages as if this were not
// here.
constexpr std::string_view kStandIn = "command -v dcopy >/dev/null 2>&1 || dcopy() { cat; }; ";

}  // namespace

int RunShellCommand(const std::string& command_line, std::string_view input) {
  constexpr int kNotStarted = 127;
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
    return kNotStarted;
  }
  UniqueFd read_end(ends[0]);
  UniqueFd write_end(ends[1]);
  const std::optional<pid_t> shell =
      StartChild({"/bin/sh", "-c", std::string(kStandIn) + command_line},
                 {read_end.Get(), STDOUT_FILENO, STDERR_FILENO}, ChildGroup::kInherited);
  if (!shell) {
    return kNotStarted;
  }
  read_end.Close();
  WriteAll(write_end.Get(), input);  // a shell that ends early wants no more: its status tells
  write_end.Close();
  return WaitForChild(*shell);
}

}  // namespace ptick
