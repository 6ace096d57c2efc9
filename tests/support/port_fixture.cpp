#include "support/port_fixture.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <optional>
#include <stdexcept>

#include "platform/linux/ports/port_endpoint.h"

namespace ptick::testing {

namespace {

namespace fs = std::filesystem;

sockaddr_un AddressOf(const fs::path& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.native().size() >= sizeof address.sun_path) {
    throw std::length_error(path);
  }
  std::ranges::copy(path.native(), std::begin(address.sun_path));
  return address;
}

}  // namespace

PortTest::PortTest() {
  std::string pattern = "/tmp/ptick_ports_XXXXXX";
  if (mkdtemp(pattern.data()) == nullptr) {
    throw std::runtime_error("mkdtemp");
  }
  root_ = pattern;
  directory_ = root_ / "run";
  fs::create_directory(directory_);
  fs::permissions(directory_, fs::perms::owner_all);
  setenv("MAVRO_RUNTIME_DIR", directory_.c_str(), 1);  // NOLINT(concurrency-mt-unsafe)
}

PortTest::~PortTest() { fs::remove_all(root_); }

fs::path PortTest::Socket(std::int64_t port) const {
  return directory_ / ("port-" + std::to_string(port));
}

UniqueFd ListenAt(const fs::path& path, int backlog, int type) {
  UniqueFd socket(::socket(AF_UNIX, type | SOCK_CLOEXEC, 0));
  const sockaddr_un address = AddressOf(path);
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): how the system takes addresses
  if (bind(socket.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
      listen(socket.Get(), backlog) != 0) {
    throw std::runtime_error("cannot listen at " + path.native());
  }
  return socket;
}

void LeaveStaleSocket(const fs::path& path) { ListenAt(path).Close(); }

UniqueFd ConnectTo(const fs::path& path) {
  UniqueFd socket(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0));
  const sockaddr_un address = AddressOf(path);
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): how the system takes addresses
  if (connect(socket.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
    throw std::runtime_error("cannot connect to " + path.native());
  }
  return socket;
}

UniqueFd AcceptFrom(const UniqueFd& listener) {
  return UniqueFd(accept4(listener.Get(), nullptr, nullptr, SOCK_CLOEXEC));
}

std::string ReadPacket(const UniqueFd& socket) {
  std::string packet(std::size_t{1} << 20, '\0');
  const ssize_t size = recv(socket.Get(), packet.data(), packet.size(), 0);
  packet.resize(size < 0 ? 0 : static_cast<std::size_t>(size));
  return packet;
}

bool WritePacket(const UniqueFd& socket, std::string_view packet) {
  return send(socket.Get(), packet.data(), packet.size(), MSG_NOSIGNAL) ==
         static_cast<ssize_t>(packet.size());
}

void AwaitReadable(int descriptor) {
  pollfd wait{descriptor, POLLIN, 0};
  while (poll(&wait, 1, -1) < 0) {
  }
}

void RunListener(const Talk& talk, std::int64_t port, int reply) {
  ports::PortEndpoint endpoint(port);
  talk.Say("listening");
  while (auto received = endpoint.Receive(std::nullopt)) {
    const ports::PortRequest& request = received->request;
    switch (request.what) {
      case ports::PortRequest::Kind::kControl:
        talk.Say("control " + request.text);
        break;
      case ports::PortRequest::Kind::kMonitorOn:
        talk.Say("on " + request.file + "|" + request.options);
        break;
      case ports::PortRequest::Kind::kMonitorOff:
        talk.Say("off");
        break;
    }
    received->Reply(reply);
  }
}

}  // namespace ptick::testing
