// A process on a port: shows what it is sent and answers the monitor switch.

#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <functional>
#include <iostream>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <system_error>

#include "platform/linux/ports/port_endpoint.h"
#include "platform/linux/unique_fd.h"

namespace {

using ptick::UniqueFd;
using ptick::ports::PortEndpoint;
using ptick::ports::PortRequest;

constexpr std::string_view kUsage =
    "Usage: port_listener [--reply N] PORT\n"
    "\n"
    "Listens on PORT (0 to 2147483647) and prints a line for each request:\n"
    "\n"
    "     control: TEXT                         a control message\n"
    "     monitor on: file 'F' options 'O'      a monitor request, answered with N\n"
    "     monitor off\n"
    "\n"
    "Control bytes are shown as \\xNN and a backslash as \\\\. Ends on SIGTERM and SIGINT, and\n"
    "when its output cannot be written.\n"
    "\n"
    "     --reply N   answer monitor requests with N, 0 when not given\n"
    "     --help      show this text\n"
    "\n"
    "The socket is in MAVRO_RUNTIME_DIR, else in XDG_RUNTIME_DIR/mavro, else in /tmp/mavro-UID.\n";

struct Arguments {
  std::int64_t port = 0;
  int reply = 0;
};

template <typename Integer>
std::optional<Integer> ParseNumber(std::string_view text) {
  Integer number = 0;
  const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || stop != text.data() + text.size()) {
    return std::nullopt;
  }
  return number;
}

std::optional<Arguments> ParseArguments(std::span<char*> words) {
  Arguments arguments;
  if (words.size() == 3 && std::string_view(words[0]) == "--reply") {
    const auto reply = ParseNumber<int>(words[1]);
    if (!reply) {
      return std::nullopt;
    }
    arguments.reply = *reply;
    words = words.subspan(2);
  }
  if (words.size() != 1) {
    return std::nullopt;
  }
  const auto port = ParseNumber<std::int64_t>(words[0]);
  if (!port) {
    return std::nullopt;
  }
  arguments.port = *port;
  return arguments;
}

std::string Visible(std::string_view text) {
  constexpr std::string_view kHexDigits = "0123456789abcdef";
  std::string shown;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 32 || byte == 127) {
      shown.append("\\x").append(1, kHexDigits[byte / 16]).append(1, kHexDigits[byte % 16]);
    } else {
      shown.append(c == '\\' ? 2 : 1, c);
    }
  }
  return shown;
}

std::string Line(const PortRequest& request) {
  switch (request.what) {
    case PortRequest::Kind::kMonitorOn:
      return "monitor on: file '" + Visible(request.file) + "' options '" +
             Visible(request.options) + "'";
    case PortRequest::Kind::kMonitorOff:
      return "monitor off";
    case PortRequest::Kind::kControl:
      break;
  }
  return "control: " + Visible(request.text);
}

// The output takes nothing any more.
struct OutputFailed {
  int error = 0;
};

void Print(const std::string& text) {
  errno = 0;
  std::cout << text << std::flush;
  if (!std::cout) {
    throw OutputFailed{errno};
  }
}

// From now on the signals that end the program are read from a descriptor, so that none can fall
// between a look and a wait.
UniqueFd EndSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGTERM);
  sigaddset(&signals, SIGINT);
  UniqueFd descriptor(signalfd(-1, &signals, SFD_CLOEXEC));
  if (!descriptor.IsOpen() || sigprocmask(SIG_BLOCK, &signals, nullptr) != 0) {
    throw std::system_error(errno, std::generic_category(), "signals");
  }
  return descriptor;
}

// What was sent before the end is still heard. Of the output no event is asked for: what comes
// unasked is that its reader has gone.
void Serve(PortEndpoint& endpoint, const UniqueFd& end, int reply) {
  for (;;) {
    std::array<pollfd, 3> wait{
        {{end.Get(), POLLIN, 0}, {endpoint.Descriptor(), POLLIN, 0}, {STDOUT_FILENO, 0, 0}}};
    if (poll(wait.data(), wait.size(), -1) < 0 && errno != EINTR) {
      throw std::system_error(errno, std::generic_category(), "poll");
    }
    while (auto received = endpoint.Receive(std::chrono::milliseconds(0))) {
      Print(Line(received->request) + "\n");
      received->Reply(reply);
    }
    if (wait[0].revents != 0) {
      return;
    }
    if (wait[2].revents != 0) {
      throw OutputFailed{EPIPE};
    }
  }
}

// Listens until it is told to end.
void Listen(const Arguments& arguments) {
  const UniqueFd end = EndSignals();
  PortEndpoint endpoint(arguments.port);
  Print("listening on port " + std::to_string(arguments.port) + "\n");
  Serve(endpoint, end, arguments.reply);
}

// Runs `part` of the program and returns the exit status. Output that nobody reads any more is no
// error.
int RunToAnEnd(const std::function<void()>& part) {
  try {
    part();
  } catch (const OutputFailed& failed) {
    if (failed.error == EPIPE) {
      return 0;
    }
    std::cerr << "port_listener: cannot write: " << std::generic_category().message(failed.error)
              << "\n";
    return 1;
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  std::signal(SIGPIPE, SIG_IGN);
  const std::span<char*> words(argv + 1, argv + argc);
  if (words.size() == 1 && std::string_view(words[0]) == "--help") {
    return RunToAnEnd([] { Print(std::string(kUsage)); });
  }
  const auto arguments = ParseArguments(words);
  if (!arguments) {
    std::cerr << kUsage;
    return 2;
  }
  try {
    return RunToAnEnd([&arguments] { Listen(*arguments); });
  } catch (const std::system_error& error) {
    std::cerr << "port_listener: cannot listen on port " << arguments->port << ": " << error.what()
              << "\n";
    return 1;
  }
}
