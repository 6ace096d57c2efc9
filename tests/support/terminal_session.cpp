#include "support/terminal_session.h"

#include <pty.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <stdexcept>

#include "support/forked.h"

namespace ptick::testing {

TerminalSession::TerminalSession() {
  int keyboard = -1;
  int terminal = -1;
  if (::openpty(&keyboard, &terminal, nullptr, nullptr, nullptr) != 0) {
    throw std::runtime_error("openpty");
  }
  keyboard_ = UniqueFd(keyboard);
  terminal_ = UniqueFd(terminal);
  ::setsid();
  if (::ioctl(terminal_.Get(), TIOCSCTTY, 0) != 0) {
    throw std::runtime_error("no controlling terminal");
  }
  // It sets the terminal while a program of its is in the foreground, and stays when it hangs up.
  ::signal(SIGTTOU, SIG_IGN);
  ::signal(SIGHUP, SIG_IGN);
}

pid_t TerminalSession::StartProgram(const std::function<int()>& body) {
  return StartForked([this, &body] {
    keyboard_.Close();
    ::setpgid(0, 0);
    ::tcsetpgrp(terminal_.Get(), ::getpid());
    ::signal(SIGTTOU, SIG_DFL);
    ::dup2(terminal_.Get(), STDIN_FILENO);
    ::dup2(terminal_.Get(), STDOUT_FILENO);
    return body();
  });
}

void TerminalSession::HoldOutput(bool hold) const {
  if (::tcflow(terminal_.Get(), hold ? TCOOFF : TCOON) != 0) {
    throw std::runtime_error("terminal output cannot be held");
  }
}

void TerminalSession::Type(std::string_view keys) const {
  if (::write(keyboard_.Get(), keys.data(), keys.size()) != static_cast<ssize_t>(keys.size())) {
    throw std::runtime_error("keys not taken");
  }
}

std::string TerminalSession::Shown() const {
  // A mark after everything else tells when all of it has been read.
  constexpr char kMark = '\x02';
  std::string shown;
  if (::write(terminal_.Get(), &kMark, 1) != 1) {
    throw std::runtime_error("terminal not writable");
  }
  while (shown.empty() || shown.back() != kMark) {
    std::array<char, 1000> block = {};
    const ssize_t got = ::read(keyboard_.Get(), block.data(), block.size());
    if (got <= 0) {
      throw std::runtime_error("terminal not readable");
    }
    shown.append(block.data(), static_cast<std::size_t>(got));
  }
  shown.pop_back();
  return shown;
}

termios TerminalSession::Settings() const {
  termios settings = {};
  ::tcgetattr(terminal_.Get(), &settings);
  return settings;
}

void TerminalSession::Set(const termios& settings) const {
  ::tcsetattr(terminal_.Get(), TCSANOW, &settings);
}

void TerminalSession::AwaitKeyWait() const {
  while ((Settings().c_lflag & ICANON) != 0) {
    ::sched_yield();  // nothing tells of a change, so it is asked for again
  }
}

std::string Describe(const termios& settings) {
  std::string text;
  for (const tcflag_t flags :
       {settings.c_iflag, settings.c_oflag, settings.c_cflag, settings.c_lflag}) {
    text += std::to_string(flags) + " ";
  }
  for (const cc_t key : settings.c_cc) {
    text += std::to_string(key) + " ";
  }
  return text;
}

}  // namespace ptick::testing
