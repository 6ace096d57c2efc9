#include "platform/linux/ports/port_wire.h"

#include <charconv>
#include <system_error>

namespace ptick::ports {

namespace {

constexpr std::string_view kSocketPrefix = "port-";
constexpr std::string_view kMonitorPrefix = "KIVA:";
constexpr std::string_view kMonitorOn = "KIVA:ON\t";
constexpr std::string_view kMonitorOff = "KIVA:OFF";

// The number that the whole of `text` spells in decimal digits, with '-' before a negative one.
template <typename Integer>
std::optional<Integer> ParseWhole(std::string_view text) {
  Integer number = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop != end) {
    return std::nullopt;
  }
  return number;
}

}  // namespace

std::string SocketName(std::int64_t port) {
  return std::string(kSocketPrefix) + std::to_string(port);
}

std::optional<std::int64_t> ParseSocketName(std::string_view name) {
  if (!name.starts_with(kSocketPrefix)) {
    return std::nullopt;
  }
  const auto port = ParseWhole<std::int64_t>(name.substr(kSocketPrefix.size()));
  // Writing it again sorts out what spells a port another way: leading zeros and "-0".
  if (!port || *port < 0 || *port > kMaxPort || SocketName(*port) != name) {
    return std::nullopt;
  }
  return port;
}

std::optional<std::string> MonitorOnPacket(std::string_view file, std::string_view options) {
  if (file.find('\t') != std::string_view::npos) {
    return std::nullopt;
  }
  return std::string(kMonitorOn).append(file).append("\t").append(options);
}

std::string MonitorOffPacket() { return std::string(kMonitorOff); }

bool IsMonitorPacket(std::string_view packet) { return packet.starts_with(kMonitorPrefix); }

std::optional<PortRequest> ParseRequest(std::string_view packet) {
  PortRequest request;
  if (!IsMonitorPacket(packet)) {
    request.text = packet;
    return request;
  }
  if (packet == kMonitorOff) {
    request.what = PortRequest::Kind::kMonitorOff;
    return request;
  }
  if (!packet.starts_with(kMonitorOn)) {
    return std::nullopt;
  }
  const std::string_view words = packet.substr(kMonitorOn.size());
  const std::size_t tab = words.find('\t');
  if (tab == std::string_view::npos) {
    return std::nullopt;
  }
  request.what = PortRequest::Kind::kMonitorOn;
  request.file = words.substr(0, tab);
  request.options = words.substr(tab + 1);
  return request;
}

std::string ReplyPacket(int result) { return std::to_string(result); }

std::optional<int> ParseReply(std::string_view packet) { return ParseWhole<int>(packet); }

}  // namespace ptick::ports
