#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/linux/ports/runtime_directory.h"
#include "platform/linux/unique_fd.h"

namespace ptick::ports {

/// A connection to the process on a port: one packet there, at most one back. Nothing here blocks
/// except AwaitReply, up to its limit.
///
/// Threads: any; a connection belongs to one at a time.

/// Connects to the socket file `name` in the runtime directory. The file is looked at and connected
/// to as one thing, so it cannot be changed for another in between. ENOENT when there is none,
/// ENOTSOCK when it is something else, ECONNREFUSED when nobody listens there, EAGAIN when the
/// queue is full, EACCES when the process that listens belongs to another user, else the error
/// number of the system.
Opened ConnectToSocket(const UniqueFd& directory, const std::string& name);

/// Connects to the process on `port`. As above, and: EINVAL when no port has that number, the error
/// numbers of OpenRuntimeDirectory, ECONNREFUSED where the socket file is something else.
Opened ConnectToPort(std::int64_t port);

/// Whether the process at the other end of a connected socket runs as the same user as this one.
bool IsOwnUser(const UniqueFd& socket);

/// Sends one packet. EINVAL when it is empty (that would read as the end of the connection),
/// EMSGSIZE when it is too long, EAGAIN when there is no room for it now, ECONNREFUSED when the
/// process has gone, else the error number of the system.
int SendPacket(const UniqueFd& socket, std::string_view packet);

/// Waits for the reply packet and returns the result in it. ETIMEDOUT when none comes within
/// `limit`, ECONNRESET when the connection ends without one, EPROTO when it is not a decimal number
/// that fits an int.
int AwaitReply(const UniqueFd& socket, std::chrono::milliseconds limit);

}  // namespace ptick::ports
