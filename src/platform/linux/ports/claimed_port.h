#pragma once

#include <sys/types.h>

#include <cstdint>
#include <string>

#include "platform/linux/unique_fd.h"

namespace ptick::ports {

/// A port that this process listens on: its socket, and the socket file in the runtime directory
/// that leads to it. The file is for the user alone (mode 0600) from the moment it exists, is
/// listened to from the moment it bears the port's name, and is removed with this object, unless it
/// has been replaced by then.
///
/// Threads: one at a time.
class ClaimedPort {
 public:
  /// Takes the port, removing the socket file of a dead process if there is one; the runtime
  /// directory is made when it is missing. Two processes that start at once take turns. Throws
  /// std::system_error: EINVAL when no port has that number, EADDRINUSE when a process listens on
  /// the port or something else than a socket has its name, EACCES when the runtime directory is
  /// not to be trusted, else the error of the system.
  explicit ClaimedPort(std::int64_t port);
  ClaimedPort(const ClaimedPort&) = delete;
  ClaimedPort& operator=(const ClaimedPort&) = delete;
  ~ClaimedPort();

  /// The listening socket; it does not block.
  const UniqueFd& Listener() const { return listener_; }

 private:
  UniqueFd directory_;
  std::string name_;
  UniqueFd listener_;
  dev_t device_ = 0;  ///< these two tell this file from one put in its place
  ino_t inode_ = 0;
};

}  // namespace ptick::ports
