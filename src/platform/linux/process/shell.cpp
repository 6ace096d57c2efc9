#include "platform/linux/process/shell.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/resource.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <optional>
#include <system_error>

#include "platform/linux/process/process_group.h"
#include "platform/linux/process/signal_hold.h"
#include "platform/linux/unique_fd.h"
#include "platform/linux/wait_ready.h"
#include "platform/linux/write_all.h"

namespace ptick {

namespace {

constexpr int kNotStarted = 127;
constexpr int kNotFed = 1;
constexpr rlim_t kFewestDescriptors = 16;

// On the line's own first line, so that the line numbers in the shell's messages stay right.
constexpr const char* kDcopyStandIn = "command -v dcopy >/dev/null 2>&1 || dcopy() { cat; }; ";

int Fail(const std::string& what, int error, int status) {
  WriteAll(STDERR_FILENO,
           "ptick: cannot " + what + ": " + std::generic_category().message(error) + "\n");
  return status;
}

// A shell puts descriptors aside from number 10 on. Where it may not, its redirections fail with
// messages that nobody understands, and dcopy is not found.
bool HasTooFewDescriptors() {
  rlimit limit = {};
  return ::getrlimit(RLIMIT_NOFILE, &limit) == 0 && limit.rlim_cur < kFewestDescriptors;
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

// A signal that ends this process ends the shell first, with all that it has started.
void LetSignalsIn(SignalHold& hold, ProcessGroup& shell) {
  while (const std::optional<int> signal = hold.Take()) {
    if (SignalHold::EndsTheProcess(*signal)) {
      shell.Kill();
    }
    SignalHold::Deliver(*signal);
  }
}

// Waits for the shell to end and handles signals meanwhile.
int Await(ProcessGroup& shell, SignalHold& hold) {
  if (hold.Descriptor() < 0) {
    return shell.Wait();
  }
  for (;;) {
    if (const std::optional<int> status = shell.Poll()) {
      return *status;
    }
    pollfd arrivals = {.fd = hold.Descriptor(), .events = POLLIN, .revents = 0};
    WaitReady({&arrivals, 1}, -1);
    LetSignalsIn(hold, shell);
  }
}

// Hands `input` to the shell until it is used up, the pipe fails (as it does when nobody reads it
// any more), or the shell has ended: something that it left running may keep the pipe open and
// never read. Returns 0 or the error number of the pipe.
int Feed(ProcessGroup& shell, int pipe, std::string_view input, SignalHold& hold) {
  ::fcntl(pipe, F_SETFL, O_NONBLOCK);
  while (!input.empty() && !shell.Poll()) {
    std::array<pollfd, 2> sources = {{{.fd = pipe, .events = POLLOUT, .revents = 0},
                                      {.fd = hold.Descriptor(), .events = POLLIN, .revents = 0}}};
    const bool knows = WaitReady(sources, -1);
    LetSignalsIn(hold, shell);
    if (!knows || sources[0].revents != 0) {
      if (const int error = WriteSome(pipe, input)) {
        return error;
      }
    }
  }
  return 0;
}

}  // namespace

int RunShellLine(const std::string& line, std::string_view input) {
  if (HasTooFewDescriptors()) {
    return Fail("run the shell", EMFILE, kNotStarted);
  }
  std::array<int, 2> ends = {-1, -1};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
    return Fail("run the shell", errno, kNotStarted);
  }
  UniqueFd read_end(ends[0]);
  UniqueFd write_end(ends[1]);
  SignalHold hold;
  ProcessGroup shell;
  if (const int error =
          shell.Start("/bin/sh", {"sh", "-c", kDcopyStandIn + line}, {.input = read_end.Get()})) {
    return Fail("run the shell", error, kNotStarted);
  }
  read_end.Close();
  const int error = Feed(shell, write_end.Get(), input, hold);
  write_end.Close();
  const int status = Await(shell, hold);
  if (error != 0 && error != EPIPE) {
    return Fail("write to the shell", error, kNotFed);
  }
  return status;
}

}  // namespace ptick
