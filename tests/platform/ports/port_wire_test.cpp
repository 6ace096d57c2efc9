#include "platform/linux/ports/port_wire.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ptick::ports {

namespace {

using Kind = PortRequest::Kind;

TEST(PortWire, NamesSocketsByPort) {
  EXPECT_EQ(SocketName(0), "port-0");
  EXPECT_EQ(SocketName(7), "port-7");
  EXPECT_EQ(SocketName(kMaxPort), "port-2147483647");
}

TEST(PortWire, KnowsNoSocketNameButItsOwn) {
  const std::vector<std::pair<std::string_view, std::optional<std::int64_t>>> rows = {
      {"port-0", 0},
      {"port-7", 7},
      {"port-2147483647", 2147483647},
      {"port-2147483648", std::nullopt},
      {"port-99999999999999999999", std::nullopt},
      {"port-", std::nullopt},
      {"port-07", std::nullopt},
      {"port-00", std::nullopt},
      {"port--0", std::nullopt},
      {"port--7", std::nullopt},
      {"port-+7", std::nullopt},
      {"port- 7", std::nullopt},
      {"port-7 ", std::nullopt},
      {"port-7.new", std::nullopt},
      {".port-7.new", std::nullopt},
      {"port-0x7", std::nullopt},
      {"Port-7", std::nullopt},
      {"port7", std::nullopt},
      {"xport-7", std::nullopt},
      {"", std::nullopt},
      {".lock", std::nullopt},
  };
  for (const auto& [name, want] : rows) {
    EXPECT_EQ(ParseSocketName(name), want) << "'" << name << "'";
  }
}

TEST(PortWire, WritesMonitorPackets) {
  EXPECT_EQ(MonitorOnPacket("out.txt", "opts"), "KIVA:ON\tout.txt\topts");
  EXPECT_EQ(MonitorOnPacket("", ""), "KIVA:ON\t\t");
  EXPECT_EQ(MonitorOnPacket("f", "a\tb\t"), "KIVA:ON\tf\ta\tb\t");
  EXPECT_EQ(MonitorOnPacket("a\tb", "c"), std::nullopt);
  EXPECT_EQ(MonitorOffPacket(), "KIVA:OFF");
}

/// A request in one line: "control TEXT", "on FILE|OPTIONS", "off" or "(none)".
std::string Shown(const std::optional<PortRequest>& request) {
  if (!request) {
    return "(none)";
  }
  switch (request->what) {
    case Kind::kMonitorOn:
      return "on " + request->file + "|" + request->options + request->text;
    case Kind::kMonitorOff:
      return "off" + request->file + request->options + request->text;
    case Kind::kControl:
      break;
  }
  return "control " + request->text + request->file + request->options;
}

TEST(PortWire, ReadsRequests) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"TICKCTL:STOP", "control TICKCTL:STOP"},
      {"TICKCTL:", "control TICKCTL:"},
      {"KIVA", "control KIVA"},
      {"kiva:OFF", "control kiva:OFF"},
      {" KIVA:OFF", "control  KIVA:OFF"},
      {std::string("a\0b\nc", 5), std::string("control a\0b\nc", 13)},
      {"KIVA:OFF", "off"},
      {"KIVA:ON\t\t", "on |"},
      {"KIVA:ON\tf\to", "on f|o"},
      {"KIVA:ON\t\to", "on |o"},
      {"KIVA:ON\tf\t", "on f|"},
      {"KIVA:ON\tf\ta\tb", "on f|a\tb"},
  };
  for (const auto& [packet, want] : rows) {
    EXPECT_EQ(Shown(ParseRequest(packet)), want) << packet;
  }
}

TEST(PortWire, RefusesMalformedMonitorRequests) {
  for (const std::string_view packet :
       {"KIVA:", "KIVA:ON", "KIVA:ON\t", "KIVA:ON\tfile", "KIVA:ON file opts", "KIVA:OFF\t",
        "KIVA:OFF ", "KIVA:off", "KIVA:on\tf\to", "KIVA:ONE\tf\to", "KIVA:STATUS"}) {
    EXPECT_TRUE(IsMonitorPacket(packet)) << packet;
    EXPECT_EQ(Shown(ParseRequest(packet)), "(none)") << packet;
  }
}

TEST(PortWire, ReadsBackTheMonitorPacketsItWrites) {
  EXPECT_EQ(Shown(ParseRequest(*MonitorOnPacket("out.txt", "a b"))), "on out.txt|a b");
  EXPECT_EQ(Shown(ParseRequest(MonitorOffPacket())), "off");
}

TEST(PortWire, ReadsRepliesThatAreNumbers) {
  const std::vector<std::pair<std::string_view, std::optional<int>>> rows = {
      {"0", 0},
      {"7", 7},
      {"007", 7},
      {"-5", -5},
      {"2147483647", 2147483647},
      {"-2147483648", -2147483647 - 1},
      {"2147483648", std::nullopt},
      {"-2147483649", std::nullopt},
      {"99999999999999999999", std::nullopt},
      {"", std::nullopt},
      {"-", std::nullopt},
      {"+7", std::nullopt},
      {" 7", std::nullopt},
      {"7\n", std::nullopt},
      {"7 ", std::nullopt},
      {"5.5", std::nullopt},
      {"0x10", std::nullopt},
      {"OK", std::nullopt},
      {std::string_view("7\0", 2), std::nullopt},
  };
  for (const auto& [packet, want] : rows) {
    EXPECT_EQ(ParseReply(packet), want) << "'" << packet << "'";
  }
  for (const int result : {0, 1, -1, 22, 2147483647, -2147483647 - 1}) {
    EXPECT_EQ(ParseReply(ReplyPacket(result)), result);
    EXPECT_LE(ReplyPacket(result).size(), kMaxReply);
  }
}

}  // namespace

}  // namespace ptick::ports
