#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>

#include "platform/linux/ports/claimed_port.h"
#include "platform/linux/ports/port_wire.h"
#include "platform/linux/unique_fd.h"

namespace ptick::ports {

/// A request that has come in.
struct Received {
  PortRequest request;
  UniqueFd connection;  ///< open while a monitor request waits for its reply

  /// Answers a monitor request with 0 for success or an error number, and ends the connection; a
  /// request that goes unanswered is refused with ECONNRESET. Never blocks. Returns 0, ENOTCONN
  /// when there is nothing to answer, or the error number of a peer that has gone.
  int Reply(int result);
};

/// The receiving side of port messaging: what a process on a port holds for as long as it runs.
///
///   ports::PortEndpoint endpoint(5);
///   while (auto received = endpoint.Receive(std::nullopt)) {
///     if (received->request.what == ports::PortRequest::Kind::kControl) {
///       Act(received->request.text);
///     } else {
///       received->Reply(0);
///     }
///   }
///
/// Only processes of the same user are listened to; the others are dropped unheard. A peer that
/// connects and sends nothing holds nobody up: it waits aside, and when kPendingLimit wait there,
/// the one that came first is dropped. A request of more than kMaxRequest bytes is dropped; a
/// malformed monitor request is answered with EINVAL here. A child process made by fork must end
/// without destroying its copy, or start another program, or the socket file is removed.
///
/// Threads: one at a time.
class PortEndpoint {
 public:
  static constexpr std::size_t kPendingLimit = 64;

  /// Listens on `port`. Throws std::system_error as ClaimedPort does: EADDRINUSE when another
  /// process has the port, EACCES when the runtime directory is not to be trusted.
  explicit PortEndpoint(std::int64_t port);

  /// The next request; nothing when none comes within `timeout` (no timeout: waits for ever).
  /// Signals do not end the wait: a program that wants to end on one polls Descriptor() next to it.
  /// Throws std::system_error when the system has no descriptor left for a connection.
  std::optional<Received> Receive(std::optional<std::chrono::milliseconds> timeout);

  /// A descriptor to poll for POLLIN with others: readable when a Receive has something to do,
  /// which may turn out to be no request. Only for that.
  int Descriptor() const { return events_.Get(); }

 private:
  void Watch(const UniqueFd& descriptor) const;
  std::optional<int> NextEvent(
      const std::optional<std::chrono::steady_clock::time_point>& deadline) const;
  UniqueFd Accept();
  UniqueFd TakePending(int descriptor);
  void DropOldest();
  std::optional<Received> Read(UniqueFd connection);

  ClaimedPort port_;
  UniqueFd events_;
  std::deque<UniqueFd> pending_;  ///< connected and silent so far, in order of arrival
  std::string buffer_;
};

}  // namespace ptick::ports
