#include "platform/linux/key_prompt.h"

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <string>

#include "platform/linux/process/signal_hold.h"
#include "platform/linux/unique_fd.h"
#include "platform/linux/wait_ready.h"

namespace ptick {

namespace {

constexpr int kForever = -1;
constexpr int kAtOnce = 0;
constexpr int kSequenceGap = 50;  // milliseconds within which the rest of a sequence comes

constexpr int kNoInput = -1;
constexpr int kInputEnded = -2;

constexpr int kEscape = 0x1B;

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

// The terminal on standard output, written to without ever waiting where it holds output up. That
// is asked of a description of its own, for the one of standard output is shared with other
// programs.
class PatientOutput {
 public:
  PatientOutput()
      : own_(::open("/proc/self/fd/1", O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC)),
        fd_(own_.IsOpen() ? own_.Get() : STDOUT_FILENO) {}

  // Writes what the terminal takes within `milliseconds` after another and before a signal comes.
  void Write(std::string_view text, int milliseconds, const SignalHold& hold) const {
    while (!text.empty()) {
      std::array<pollfd, 2> sources = {{{.fd = fd_, .events = POLLOUT, .revents = 0},
                                        {.fd = hold.Descriptor(), .events = POLLIN, .revents = 0}}};
      if (WaitReady(sources, milliseconds) && sources[0].revents == 0) {
        return;
      }
      const ssize_t written = ::write(fd_, text.data(), text.size());
      if (written >= 0) {
        text.remove_prefix(static_cast<std::size_t>(written));
      } else if (errno != EINTR && (errno != EAGAIN || milliseconds == kAtOnce)) {
        return;
      }
    }
  }

 private:
  UniqueFd own_;
  int fd_;
};

// A prompt that is on its row while this lives.
class ShownPrompt {
 public:
  ShownPrompt(std::string_view prompt, const SignalHold& hold) : prompt_(prompt), hold_(hold) {
    Show();
  }
  ShownPrompt(const ShownPrompt&) = delete;
  ShownPrompt& operator=(const ShownPrompt&) = delete;
  ~ShownPrompt() { output_.Write(kClearRow, kForever, hold_); }

  /// Also where it is shown already, or keys typed ahead were echoed.
  void Show() const { output_.Write(std::string(kClearRow).append(prompt_), kForever, hold_); }
  /// Before a signal takes effect, which output that is held up must not delay.
  void EraseAtOnce() const { output_.Write(kClearRow, kAtOnce, hold_); }

 private:
  static constexpr std::string_view kClearRow = "\r\x1b[K";

  PatientOutput output_;
  std::string_view prompt_;
  const SignalHold& hold_;
};

// Waits until there is input or a signal; the signal, if that is what came.
std::optional<int> AwaitInput(SignalHold& hold) {
  while (true) {
    std::array<pollfd, 2> sources = {{{.fd = STDIN_FILENO, .events = POLLIN, .revents = 0},
                                      {.fd = hold.Descriptor(), .events = POLLIN, .revents = 0}}};
    WaitReady(sources, kForever);
    if (const std::optional<int> signal = hold.Take()) {
      return signal;
    }
    if (sources[0].revents != 0) {
      return std::nullopt;
    }
  }
}

// The next byte of standard input.
int ReadByte() {
  unsigned char byte = 0;
  const ssize_t got = ::read(STDIN_FILENO, &byte, 1);
  if (got == 1) {
    return byte;
  }
  return got < 0 && (errno == EINTR || errno == EAGAIN) ? kNoInput : kInputEnded;
}

int ReadByteOfSequence() {
  std::array<pollfd, 1> input = {{{.fd = STDIN_FILENO, .events = POLLIN, .revents = 0}}};
  WaitReady(input, kSequenceGap);
  return input[0].revents != 0 ? ReadByte() : kNoInput;
}

// After an ESC, takes what comes with it: '[', bytes below '@' and one more; 'O' and one byte; or
// one byte, as with the Alt key.
void SkipSequence() {
  int byte = kEscape;
  while (byte == kEscape) {
    byte = ReadByteOfSequence();
  }
  if (byte == 'O') {
    ReadByteOfSequence();
  } else if (byte == '[') {
    do {
      byte = ReadByteOfSequence();
    } while (byte >= ' ' && byte < '@');
  }
}

}  // namespace

std::optional<char> AskForKey(std::string_view prompt, std::string_view keys) {
  SignalHold hold;
  const KeyMode mode;
  const ShownPrompt shown(prompt, hold);
  while (true) {
    if (const std::optional<int> signal = AwaitInput(hold)) {
      if (*signal != SIGCONT) {
        shown.EraseAtOnce();
        mode.Leave();
      }
      SignalHold::Deliver(*signal);
      // Still here: continued after a stop, in which the shell may have set the terminal its way.
      mode.Enter();
      shown.Show();
      continue;
    }
    const int byte = ReadByte();
    if (byte == kInputEnded) {
      return std::nullopt;
    }
    if (byte == kEscape) {
      SkipSequence();
    } else if (byte != kNoInput && keys.find(static_cast<char>(byte)) != std::string_view::npos) {
      return static_cast<char>(byte);
    }
  }
}

}  // namespace ptick
