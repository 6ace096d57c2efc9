#include "platform/linux/ports/claimed_port.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <iterator>
#include <system_error>
#include <utility>

#include "platform/linux/ports/port_connection.h"
#include "platform/linux/ports/port_wire.h"
#include "platform/linux/ports/runtime_directory.h"

namespace ptick::ports {

namespace {

// Connections that may wait to be taken in; one more and the sender is told that the queue is
// full.
constexpr int kBacklog = 64;
constexpr mode_t kOwnerOnly = S_IRUSR | S_IWUSR;

[[noreturn]] void Fail(int error, const char* what) {
  throw std::system_error(error, std::generic_category(), what);
}

UniqueFd CheckedDirectory() {
  Opened directory = CreateRuntimeDirectory();
  if (directory.error != 0) {
    Fail(directory.error, "runtime directory");
  }
  return std::move(directory.descriptor);
}

// Held while a socket file is judged and replaced, so that of two starters one sees the other's.
UniqueFd LockDirectory(const UniqueFd& directory) {
  UniqueFd lock(
      ::openat(directory.Get(), ".lock", O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, kOwnerOnly));
  if (!lock.IsOpen()) {
    Fail(errno, "lock file");
  }
  while (::flock(lock.Get(), LOCK_EX) != 0) {
    if (errno != EINTR) {
      Fail(errno, "lock file");
    }
  }
  return lock;
}

// The file of a dead process does not hold the port; anything else that has the name does.
void RequireFree(const UniqueFd& directory, const std::string& name) {
  const int error = ConnectToSocket(directory, name).error;
  switch (error) {
    case ENOENT:
    case ECONNREFUSED:
      return;
    case 0:
    case EAGAIN:
    case EACCES:
    case ENOTSOCK:
    case EPROTOTYPE:
      Fail(EADDRINUSE, "port");
    default:
      Fail(error, "port");
  }
}

// A socket that listens under `name`; until it is renamed nobody looks there.
UniqueFd Listen(const UniqueFd& directory, const std::string& name) {
  UniqueFd socket(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
  // The file inherits the mode of the socket, so there is no moment at which others may connect.
  if (!socket.IsOpen() || ::fchmod(socket.Get(), kOwnerOnly) != 0) {
    Fail(errno, "socket");
  }
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::ranges::copy(DescriptorPath(directory) + "/" + name, std::begin(address.sun_path));
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): how the system takes addresses
  if (::bind(socket.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
      ::listen(socket.Get(), kBacklog) != 0) {
    Fail(errno, "socket file");
  }
  return socket;
}

}  // namespace

ClaimedPort::ClaimedPort(std::int64_t port) {
  if (port < 0 || port > kMaxPort) {
    Fail(EINVAL, "port");
  }
  directory_ = CheckedDirectory();
  name_ = SocketName(port);
  const UniqueFd lock = LockDirectory(directory_);
  RequireFree(directory_, name_);

  const std::string new_name = "." + name_ + ".new";
  ::unlinkat(directory_.Get(), new_name.c_str(), 0);  // left by a starter that was killed
  listener_ = Listen(directory_, new_name);
  struct stat status {};
  if (::fstatat(directory_.Get(), new_name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0 ||
      ::renameat(directory_.Get(), new_name.c_str(), directory_.Get(), name_.c_str()) != 0) {
    Fail(errno, "socket file");
  }
  device_ = status.st_dev;
  inode_ = status.st_ino;
}

ClaimedPort::~ClaimedPort() {
  // While the listener is open no starter takes the file for a dead process's, and its inode number
  // is not used again: what is compared here is what is removed.
  struct stat status {};
  if (::fstatat(directory_.Get(), name_.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 &&
      status.st_dev == device_ && status.st_ino == inode_) {
    ::unlinkat(directory_.Get(), name_.c_str(), 0);
  }
}

}  // namespace ptick::ports
