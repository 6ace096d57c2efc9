#pragma once

#include <chrono>
#include <cstdint>
#include <string_view>
#include <vector>

namespace ptick::ports {

/// The sending side of port messaging: how ptick reaches the processes on ports. Each process
/// listens on a socket of its own in the user's runtime directory; only processes of the same user
/// are spoken to, and every call looks at the directory anew.
///
/// Results are 0 or an error number:
///
///   EINVAL        no port has that number (negative, or above 2147483647)
///   EACCES        the runtime directory is not to be trusted, or the process is another user's
///   ENOENT        no process has that port
///   ECONNREFUSED  the process that had the port has gone
///   EAGAIN        the queue of the process is full
///   EMSGSIZE      the text is too long: above 256 KiB, or what the system takes at once
///
/// Other error numbers of the system (EMFILE, ...) come through as they are.
///
/// Threads: any; nothing is kept between two calls.

/// Hands `text` to the process on `port`, byte for byte, and does not wait for it to act; never
/// blocks. An empty text is EINVAL.
int SendPortMessage(std::int64_t port, std::string_view text);

/// How long a process may take to answer a monitor request.
inline constexpr std::chrono::milliseconds kReplyLimit = std::chrono::seconds(5);

/// Switches the monitor of the process on `port` and returns the result that the process answers,
/// or one of the above, or: ETIMEDOUT when it does not answer within `limit`, ECONNRESET when it
/// ends the connection without an answer, EPROTO when the answer is not a decimal number that fits
/// an int, EINVAL when `file` holds a TAB (the separator; `options` may hold them).
int MonitorOn(std::int64_t port, std::string_view file, std::string_view options,
              std::chrono::milliseconds limit = kReplyLimit);
int MonitorOff(std::int64_t port, std::chrono::milliseconds limit = kReplyLimit);

/// The ports from `first` to `last` that have a socket file, ascending; whether somebody still
/// listens there, only a message tells. Empty when the runtime directory is not to be trusted or
/// cannot be read. Costs one pass over the directory, whatever the range.
std::vector<std::int64_t> ListeningPorts(std::int64_t first, std::int64_t last);

}  // namespace ptick::ports
