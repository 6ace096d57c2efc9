#include "platform/linux/terminal.h"

#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>

#include "platform/linux/process/signal_hold.h"
#include "platform/linux/wait_ready.h"

namespace ptick {
namespace {

// The terminal on standard input, giving keys one by one while this lives. Does nothing to anything
// that is no terminal.
class KeyMode {
 public:
  KeyMode() : is_terminal_(::tcgetattr(STDIN_FILENO, &found_) == 0) { Enter(); }
  KeyMode(const KeyMode&) = delete;
  KeyMode& operator=(const KeyMode&) = delete;
  ~KeyMode() { Leave(); }

  void Enter() const {
    termios keys = found_;
    keys.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
    keys.c_cc[VMIN] = 1;
    keys.c_cc[VTIME] = 0;
    Set(keys);
  }
  void Leave() const { Set(found_); }

 private:
  // At once: waiting for output held up by Ctrl-S could last for ever.
  void Set(const termios& settings) const {
    if (is_terminal_) {
      ::tcsetattr(STDIN_FILENO, TCSANOW, &settings);
    }
  }

  termios found_ = {};
  bool is_terminal_;
};

}  // namespace

std::optional<char> WaitForKey() {
  SignalHold hold;
  const KeyMode mode;
  while (true) {
    std::array<pollfd, 2> sources = {{{.fd = STDIN_FILENO, .events = POLLIN, .revents = 0},
                                      {.fd = hold.Descriptor(), .events = POLLIN, .revents = 0}}};
    WaitReady(sources, -1);
    if (const std::optional<int> signal = hold.Take()) {
      if (*signal != SIGCONT) {
        mode.Leave();
      }
      SignalHold::Deliver(*signal);
      // Still here: continued after a stop, in which the shell may have set the terminal its way.
      mode.Enter();
    } else if (sources[0].revents != 0) {
      char key = 0;
      const ssize_t got = ::read(STDIN_FILENO, &key, 1);
      if (got == 1) {
        return key;
      }
      if (got == 0 || (errno != EINTR && errno != EAGAIN)) {
        return std::nullopt;
      }
    }
  }
}

}  // namespace ptick
