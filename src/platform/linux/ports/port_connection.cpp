#include "platform/linux/ports/port_connection.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <limits>
#include <optional>

#include "platform/linux/ports/port_wire.h"
#include "platform/linux/wait_ready.h"

namespace ptick::ports {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::int64_t kMaxWait = std::numeric_limits<int>::max();

Opened Failed(int error) { return {UniqueFd(), error}; }

// Opens the socket file itself, whatever it may be; a link is not followed.
Opened OpenSocketFile(const UniqueFd& directory, const std::string& name) {
  UniqueFd file(::openat(directory.Get(), name.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
  if (!file.IsOpen()) {
    return Failed(errno);
  }
  struct stat status {};
  if (::fstat(file.Get(), &status) != 0) {
    return Failed(errno);
  }
  if (!S_ISSOCK(status.st_mode)) {
    return Failed(ENOTSOCK);
  }
  return {std::move(file), 0};
}

int SendError(int error) {
  switch (error) {
    case ENOBUFS:
    case E2BIG:
      return EMSGSIZE;
    case EPIPE:
    case ECONNRESET:
    case ENOTCONN:
      return ECONNREFUSED;
    default:
      return error;
  }
}

// The reply, when it is there: its result or the error number of a bad one.
std::optional<int> TakeReply(const UniqueFd& socket) {
  std::array<char, kMaxReply> reply{};
  const ssize_t size = ::recv(socket.Get(), reply.data(), reply.size(), MSG_DONTWAIT | MSG_TRUNC);
  if (size < 0) {
    return errno == EAGAIN || errno == EINTR ? std::nullopt : std::optional(errno);
  }
  if (size == 0) {
    return ECONNRESET;
  }
  const auto length = static_cast<std::size_t>(size);
  if (length > reply.size()) {
    return EPROTO;
  }
  return ParseReply({reply.data(), length}).value_or(EPROTO);
}

}  // namespace

Opened ConnectToSocket(const UniqueFd& directory, const std::string& name) {
  const Opened file = OpenSocketFile(directory, name);
  if (file.error != 0) {
    return Failed(file.error);
  }
  UniqueFd socket(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
  if (!socket.IsOpen()) {
    return Failed(errno);
  }
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::ranges::copy(DescriptorPath(file.descriptor), std::begin(address.sun_path));
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): how the system takes addresses
  if (::connect(socket.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
    return Failed(errno);
  }
  if (!IsOwnUser(socket)) {
    return Failed(EACCES);
  }
  return {std::move(socket), 0};
}

Opened ConnectToPort(std::int64_t port) {
  if (port < 0 || port > kMaxPort) {
    return Failed(EINVAL);
  }
  const Opened directory = OpenRuntimeDirectory();
  if (directory.error != 0) {
    return Failed(directory.error);
  }
  Opened connection = ConnectToSocket(directory.descriptor, SocketName(port));
  if (connection.error == ENOTSOCK) {
    connection.error = ECONNREFUSED;
  }
  return connection;
}

bool IsOwnUser(const UniqueFd& socket) {
  ucred peer{};
  socklen_t size = sizeof peer;
  return ::getsockopt(socket.Get(), SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 &&
         peer.uid == ::geteuid();
}

int SendPacket(const UniqueFd& socket, std::string_view packet) {
  if (packet.empty()) {
    return EINVAL;
  }
  if (packet.size() > kMaxRequest) {
    return EMSGSIZE;
  }
  ssize_t sent = 0;
  do {
    sent = ::send(socket.Get(), packet.data(), packet.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
  } while (sent < 0 && errno == EINTR);
  return sent < 0 ? SendError(errno) : 0;
}

int AwaitReply(const UniqueFd& socket, std::chrono::milliseconds limit) {
  const Clock::time_point deadline = Clock::now() + limit;
  for (;;) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
    pollfd wait{socket.Get(), POLLIN, 0};
    // A signal may cut the wait short, and a wait that ends may find nothing: go on to the
    // deadline.
    WaitReady({&wait, 1}, static_cast<int>(std::clamp<std::int64_t>(left.count(), 0, kMaxWait)));
    if (const auto result = TakeReply(socket)) {
      return *result;
    }
    if (Clock::now() >= deadline) {
      return ETIMEDOUT;
    }
  }
}

}  // namespace ptick::ports
