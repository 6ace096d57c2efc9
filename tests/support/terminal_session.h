#pragma once

#include <sys/types.h>
#include <termios.h>

#include <functional>
#include <string>
#include <string_view>

#include "platform/linux/unique_fd.h"

namespace ptick::testing {

/// A pseudo-terminal, and this process made the leader of a session on it, as a login shell is. The
/// terminal's settings outlive the programs run on it, which they do not where a program itself
/// leads the session. Only for a forked process, and once.
class TerminalSession {
 public:
  TerminalSession();
  TerminalSession(const TerminalSession&) = delete;
  TerminalSession& operator=(const TerminalSession&) = delete;
  ~TerminalSession() = default;

  /// Starts `body` as the shell starts a program in the foreground: in a group of its own, the
  /// terminal its standard input and output.
  pid_t StartProgram(const std::function<int()>& body);

  /// Lets no output through, or lets it through again, as Ctrl-S and Ctrl-Q do.
  void HoldOutput(bool hold) const;
  /// Presses keys.
  void Type(std::string_view keys) const;
  /// Takes the terminal's other end away, as a closed window does.
  void HangUp() { keyboard_.Close(); }
  /// What the terminal has shown so far, echoes included.
  std::string Shown() const;

  termios Settings() const;
  void Set(const termios& settings) const;
  /// Returns once a program has set the terminal to give keys without waiting for a line.
  void AwaitKeyWait() const;

 private:
  UniqueFd keyboard_;
  UniqueFd terminal_;
};

/// What a test compares of a terminal's settings.
std::string Describe(const termios& settings);

}  // namespace ptick::testing
