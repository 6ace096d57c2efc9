#pragma once

#include <sys/types.h>

#include <cstdint>
#include <string>

#include "platform/linux/unique_fd.h"

namespace ptick::ports {

/// A port that this process listens on: its socket, and the socket file in the runtime directory
/// that leads to it. The file is for the user alone (mode 0600) from the moment it exists, is
/// listened to from the moment it bears the port's name, and goes when this goes, unless it has
/// been replaced by then.
class ClaimedPort {
 public:
  /// Takes the port, with the file of a process that has died out of the way; the runtime directory
  /// is made when it is missing. Two processes that start at once take turns. Throws
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
  dev_t device_ = 0;  ///< these two tell the own file from one put in its place
  ino_t inode_ = 0;
};

}  // namespace ptick::ports
