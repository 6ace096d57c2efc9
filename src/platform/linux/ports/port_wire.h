#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ptick::ports {

/// What processes on ports say to each other, as bytes. docs/port-protocol.md has the whole of it.
///
/// Threads: any.

inline constexpr std::int64_t kMaxPort = 2147483647;
/// The most bytes that a request may have. The system's send buffer usually ends earlier.
inline constexpr std::size_t kMaxRequest = std::size_t{256} * 1024;
/// The most bytes that a reply may have.
inline constexpr std::size_t kMaxReply = 32;

/// The name of a port's socket file in the runtime directory: "port-5". Ports are 0 to
/// kMaxPort.
std::string SocketName(std::int64_t port);

/// The port that a socket file belongs to; nothing for a name that SocketName does not give.
std::optional<std::int64_t> ParseSocketName(std::string_view name);

/// What a process is asked to do.
struct PortRequest {
  enum class Kind {
    kControl,     ///< act on `text`
    kMonitorOn,   ///< switch the monitor on with `file` and `options`; wants a reply
    kMonitorOff,  ///< switch the monitor off; wants a reply
  };
  Kind what = Kind::kControl;
  std::string text;
  std::string file;     ///< may be empty; holds no TAB
  std::string options;  ///< may be empty
};

/// The packet that switches the monitor on; nothing when `file` holds a TAB, which would end it.
std::optional<std::string> MonitorOnPacket(std::string_view file, std::string_view options);

/// The packet that switches the monitor off.
std::string MonitorOffPacket();

/// Whether a packet is meant for the monitor, well-formed or not; every other is a control message.
bool IsMonitorPacket(std::string_view packet);

/// The request that a packet makes; nothing for a malformed one of the monitor's.
std::optional<PortRequest> ParseRequest(std::string_view packet);

/// The packet that answers a monitor request, and the result that one carries: a decimal number,
/// with '-' before a negative one. Nothing for any other text, or a number that is no int.
std::string ReplyPacket(int result);
std::optional<int> ParseReply(std::string_view packet);

}  // namespace ptick::ports
