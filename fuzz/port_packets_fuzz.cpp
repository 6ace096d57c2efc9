// What processes on ports say to each other: any packet is read or refused, and what is made of a
// request or reply is read as that request or reply.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "fuzz/fuzz_input.h"
#include "fuzz/require.h"
#include "platform/linux/ports/port_wire.h"

namespace {

using namespace ptick::ports;
using ptick::fuzz::Require;
using ptick::fuzz::RequireEqual;
using Kind = PortRequest::Kind;

void CheckAnyRequest(const std::string& packet) {
  const std::optional<PortRequest> request = ParseRequest(packet);
  if (!request) {
    Require(IsMonitorPacket(packet), "a control message is never malformed");
    return;
  }
  switch (request->what) {
    case Kind::kControl:
      Require(!IsMonitorPacket(packet), "what is meant for the monitor is no control message");
      RequireEqual(packet, request->text, "a control message is its text");
      break;
    case Kind::kMonitorOn:
      RequireEqual(packet, MonitorOnPacket(request->file, request->options).value_or("(none)"),
                   "a request that was read makes the same packet");
      break;
    case Kind::kMonitorOff:
      RequireEqual(packet, MonitorOffPacket(), "there is one packet that switches off");
      break;
  }
}

void CheckMonitorOn(const std::string& file, const std::string& options) {
  const std::optional<std::string> packet = MonitorOnPacket(file, options);
  Require(packet.has_value() == (file.find('\t') == std::string::npos), "a TAB ends a file name");
  if (!packet) {
    return;
  }
  const std::optional<PortRequest> request = ParseRequest(*packet);
  Require(request && request->what == Kind::kMonitorOn, "a request to switch on is read as one");
  RequireEqual(file, request->file, "the file name comes back");
  RequireEqual(options, request->options, "the options come back");
}

void CheckMonitorOff() {
  const std::optional<PortRequest> request = ParseRequest(MonitorOffPacket());
  Require(request && request->what == Kind::kMonitorOff, "a request to switch off is read as one");
}

void CheckReply(int result) {
  const std::string packet = ReplyPacket(result);
  Require(packet.size() <= kMaxReply, "a reply fits a reply's size");
  Require(ParseReply(packet) == result, "a reply carries its result");
}

void CheckAnyReply(const std::string& packet) {
  const std::optional<int> result = ParseReply(packet);
  if (!result) {
    return;
  }
  Require(packet.find_first_not_of("-0123456789") == std::string::npos,
          "a reply holds a decimal number");
  CheckReply(*result);
}

void CheckSocketNames(std::int64_t port, const std::string& any_name) {
  Require(ParseSocketName(SocketName(port)) == port, "a socket name is read as its port");
  if (const std::optional<std::int64_t> named = ParseSocketName(any_name)) {
    Require(*named >= 0 && *named <= kMaxPort, "a socket name names a port");
    RequireEqual(any_name, SocketName(*named), "a port has one socket name");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ptick::fuzz::FuzzInput input(data, size);
  std::uint32_t number = 0;
  for (int i = 0; i < 4; ++i) {
    number = (number << 8U) | input.TakeByte();
  }
  const std::string first = input.TakeUpTo('\n');
  const std::string second = input.TakeRest();

  CheckAnyRequest(first);
  CheckMonitorOn(first, second);
  CheckMonitorOff();
  CheckReply(static_cast<int>(number));
  CheckAnyReply(first);
  CheckSocketNames(number & 0x7FFFFFFFU, first);
  return 0;
}
