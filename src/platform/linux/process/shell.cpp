#include "platform/linux/process/shell.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <optional>
#include <system_error>

#include "platform/linux/process/child_process.h"
#include "platform/linux/process/signal_hold.h"
#include "platform/linux/unique_fd.h"
#include "platform/linux/write_all.h"

namespace ptick {
namespace {

constexpr int kNotStarted = 127;
constexpr int kNotFed = 1;

// On the line's own first line, so that the line numbers in the shell's messages stay right.
constexpr const char* kDcopyStandIn = "command -v dcopy >/dev/null 2>&1 || dcopy() { cat; }; ";

int Fail(const std::string& what, int error, int status) {
  WriteAll(STDERR_FILENO,
           "ptick: cannot " + what + ": " + std::generic_category().message(error) + "\n");
  return status;
}

// Writes what the pipe takes off the front of `input`. Returns 0 or the error number.
int WriteSome(int pipe, std::string_view& input) {
  const ssize_t written = ::write(pipe, input.data(), input.size());
  if (written < 0) {
    return errno == EAGAIN || errno == EINTR ? 0 : errno;
  }
  input.remove_prefix(static_cast<std::size_t>(written));
  return 0;
}

// A signal that ends this process ends the shell first: one that waits, for a reader of a named
// pipe say, would stay behind.
void LetSignalsIn(SignalHold& hold, pid_t shell) {
  while (const std::optional<int> signal = hold.Take()) {
    if (SignalHold::EndsTheProcess(*signal)) {
      ::kill(shell, *signal);
    }
    SignalHold::Deliver(*signal);
  }
}

// Waits for the shell's end, with an open eye for signals.
int Await(pid_t shell, SignalHold& hold) {
  if (hold.Descriptor() < 0) {
    return WaitForChild(shell);
  }
  for (;;) {
    if (const std::optional<int> status = PollChild(shell)) {
      return *status;
    }
    pollfd arrivals = {.fd = hold.Descriptor(), .events = POLLIN, .revents = 0};
    ::poll(&arrivals, 1, -1);
    LetSignalsIn(hold, shell);
  }
}

struct Fed {
  std::optional<int> status = std::nullopt;  ///< of the shell, when it ended first
  int error = 0;                             ///< of the pipe
};

// Hands `input` to the shell until it is used up, the pipe fails (as it does when nobody reads it
// any more), or the shell has ended: something that it left running may keep the pipe open and
// never read.
Fed Feed(pid_t shell, int pipe, std::string_view input, SignalHold& hold) {
  ::fcntl(pipe, F_SETFL, O_NONBLOCK);
  while (!input.empty()) {
    if (const std::optional<int> status = PollChild(shell)) {
      return {.status = status};
    }
    std::array<pollfd, 2> sources = {{{.fd = pipe, .events = POLLOUT, .revents = 0},
                                      {.fd = hold.Descriptor(), .events = POLLIN, .revents = 0}}};
    ::poll(sources.data(), sources.size(), -1);
    LetSignalsIn(hold, shell);
    if (sources[0].revents != 0) {
      if (const int error = WriteSome(pipe, input)) {
        return {.error = error};
      }
    }
  }
  return {};
}

}  // namespace

int RunShellLine(const std::string& line, std::string_view input) {
  std::array<int, 2> ends = {-1, -1};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
    return Fail("run the shell", errno, kNotStarted);
  }
  UniqueFd read_end(ends[0]);
  UniqueFd write_end(ends[1]);
  SignalHold hold;
  const std::optional<pid_t> shell =
      StartChild("/bin/sh", {"sh", "-c", kDcopyStandIn + line}, {.input = read_end.Get()});
  if (!shell) {
    return Fail("run the shell", errno, kNotStarted);
  }
  read_end.Close();
  const Fed fed = Feed(*shell, write_end.Get(), input, hold);
  write_end.Close();
  const int status = fed.status ? *fed.status : Await(*shell, hold);
  if (fed.error != 0 && fed.error != EPIPE) {
    return Fail("write to the shell", fed.error, kNotFed);
  }
  return status;
}

}  // namespace ptick
