// While a key is waited for, signals are taken from a descriptor instead of interrupting: the
// terminal can then be put back before a signal has its effect, without a moment in which one could
// slip by.

#include <fcntl.h>
#include <poll.h>
#include <sys/signalfd.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <initializer_list>

#include "platform/linux/terminal.h"
#include "platform/linux/unique_fd.h"

namespace ptick {
namespace {

sigset_t SignalSet(std::initializer_list<int> signals) {
  sigset_t set;
  ::sigemptyset(&set);
  for (const int signal : signals) {
    ::sigaddset(&set, signal);
  }
  return set;
}

/// The terminal on standard input in a state that gives single keys, put back at the end.
class KeyMode {
 public:
  KeyMode() : is_terminal_(::tcgetattr(STDIN_FILENO, &found_) == 0) { Enter(); }
  KeyMode(const KeyMode&) = delete;
  KeyMode& operator=(const KeyMode&) = delete;
  ~KeyMode() { Leave(); }

  void Enter() {
    termios keys = found_;
    keys.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
    keys.c_cc[VMIN] = 1;
    keys.c_cc[VTIME] = 0;
    Set(keys);
  }
  void Leave() { Set(found_); }

 private:
  void Set(const termios& attributes) {
    if (is_terminal_) {
      ::tcsetattr(STDIN_FILENO, TCSADRAIN, &attributes);
    }
  }

  termios found_{};
  bool is_terminal_;
};

/// Holds signals back and hands them out one by one.
class HeldSignals {
 public:
  HeldSignals()
      : held_(SignalSet({SIGINT, SIGQUIT, SIGTERM, SIGHUP, SIGTSTP, SIGCONT, SIGTTIN, SIGTTOU})) {
    ::sigprocmask(SIG_BLOCK, &held_, &before_);
    signals_ = UniqueFd(::signalfd(-1, &held_, SFD_CLOEXEC | SFD_NONBLOCK));
  }
  HeldSignals(const HeldSignals&) = delete;
  HeldSignals& operator=(const HeldSignals&) = delete;
  ~HeldSignals() { ::sigprocmask(SIG_SETMASK, &before_, nullptr); }

  int Descriptor() const { return signals_.Get(); }

  /// The next signal that came, 0 when there is none.
  int Take() const {
    signalfd_siginfo info{};
    const bool taken = ::read(Descriptor(), &info, sizeof info) == sizeof info;
    return taken ? static_cast<int>(info.ssi_signo) : 0;
  }

  /// Lets a signal have its effect now; returns when it does not end the process.
  void Deliver(int signal) const {
    ::raise(signal);
    ::sigprocmask(SIG_SETMASK, &before_, nullptr);
    ::sigprocmask(SIG_BLOCK, &held_, nullptr);
  }

 private:
  sigset_t held_;
  sigset_t before_{};
  UniqueFd signals_;
};

std::optional<char> ReadByte() {
  char byte = 0;
  return ::read(STDIN_FILENO, &byte, 1) == 1 ? std::optional(byte) : std::nullopt;
}

}  // namespace

std::optional<char> WaitForKey() {
  const HeldSignals signals;
  KeyMode mode;
  for (;;) {
    std::array<pollfd, 2> events = {
        pollfd{.fd = STDIN_FILENO, .events = POLLIN, .revents = 0},
        pollfd{.fd = signals.Descriptor(), .events = POLLIN, .revents = 0}};
    if (::poll(events.data(), events.size(), -1) < 0) {
      if (errno == EINTR) {
        continue;
      }
      return std::nullopt;
    }
    if (const int signal = signals.Take(); signal != 0) {
      mode.Leave();
      if (signal != SIGCONT) {
        signals.Deliver(signal);
      }
      mode.Enter();  // after a stop, or when the process was put back into the foreground
    } else if (events[0].revents != 0) {
      return ReadByte();
    }
  }
}

}  // namespace ptick
