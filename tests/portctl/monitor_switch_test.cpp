#include "portctl/monitor_switch.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "output/output.h"
#include "support/memory_console.h"
#include "support/memory_ports.h"

namespace ptick {

namespace {

constexpr const char* kNoPort = "portno not set to numeric port number\n";
constexpr const char* kNoType = "The type should be ON or OFF\n";
constexpr const char* kBadType = "Invalid 'type' specified, should be ON or OFF\n";

/// What a switch came to, in one line: its call, status and what was printed.
struct Outcome {
  int status = 0;
  std::vector<std::string> calls;
  std::string printed;
  std::string on_the_terminal;
};

Outcome Switch(const std::string& control_text, const std::string& own_port, MemoryPorts& ports) {
  MemoryConsole console;
  Output output(console, "ptick");
  const int status = SwitchMonitor({"-j", control_text}, own_port, ports, output);
  output.Finish();
  return {status, ports.port_calls, console.printed, console.on_terminal};
}

/// By the process on port 12, where all is well on that port and on port 5.
Outcome Switch(const std::string& control_text) {
  MemoryPorts ports;
  ports.port_results = {{5, 0}, {12, 0}};
  return Switch(control_text, "12", ports);
}

TEST(MonitorSwitch, TakesItsWordsBetweenSingleBlanks) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"ON 5 out.txt opts", "on 5 [out.txt] [opts]"},
      {"ON 5 out.txt", "on 5 [out.txt] []"},
      {"ON 5", "on 5 [] []"},
      {"ON 5 ", "on 5 [] []"},
      {"ON 5  opts", "on 5 [] [opts]"},
      {"ON 5 f  more", "on 5 [f] []"},
      {"ON 5 f o extra words", "on 5 [f] [o]"},
      {"ON 5 a\tb c\td", "on 5 [a\tb] [c\td]"},
      {"on 5 F O", "on 5 [F] [O]"},
      {"On 5", "on 5 [] []"},
      {"oN 5", "on 5 [] []"},
      {"OFF 5", "off 5"},
      {"off 5", "off 5"},
      {"Off 5 extra words", "off 5"},
      {"ON % f", "on 12 [f] []"},
      {"OFF %", "off 12"},
  };
  for (const auto& [text, call] : rows) {
    const Outcome outcome = Switch(text);
    EXPECT_EQ(outcome.calls, std::vector<std::string>{call}) << text;
    EXPECT_EQ(outcome.status, 0) << text;
    EXPECT_EQ(outcome.printed + outcome.on_the_terminal, "") << text;
  }
}

TEST(MonitorSwitch, TakesTheIntegerPartOfAnyNumericPort) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"5", "off 5"},
      {"005", "off 5"},
      {"+5", "off 5"},
      {"5.5", "off 5"},
      {"5.999", "off 5"},
      {"-5", "off -5"},
      {"-5.9", "off -5"},
      {"-0.5", "off 0"},
      {"2147483648", "off 2147483648"},
      {"9223372036854775807", "off 9223372036854775807"},
      {"9223372036854775808", "off 9223372036854775807"},
      {"-9223372036854775808", "off -9223372036854775808"},
      {"-99999999999999999999", "off -9223372036854775808"},
      {std::string(400, '9'), "off 9223372036854775807"},
  };
  for (const auto& [port, call] : rows) {
    EXPECT_EQ(Switch("OFF " + port).calls, std::vector<std::string>{call}) << port;
  }
}

TEST(MonitorSwitch, RefusesBadCallsOnTheTerminal) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"", kNoPort},        {"ON", kNoPort},      {"OFF", kNoPort},      {"ON ", kNoPort},
      {"ON  5", kNoPort},   {"ON five", kNoPort}, {"ON 5a", kNoPort},    {"ON .5", kNoPort},
      {"ON 5.", kNoPort},   {"ON 1e5", kNoPort},  {"ON %% f", kNoPort},  {"ON 5% f", kNoPort},
      {"-j ON 5", kNoPort}, {"MAYBE", kNoPort},   {"5 ON", kNoPort},     {" 5", kNoType},
      {" %", kNoType},      {" 5 ON", kNoType},   {"MAYBE 5", kBadType}, {"O 5", kBadType},
      {"ONE 5", kBadType},  {"0N 5", kBadType},   {"1 5", kBadType},     {"ON\t 5", kBadType},
  };
  for (const auto& [text, message] : rows) {
    const Outcome outcome = Switch(text);
    EXPECT_EQ(outcome.status, 2) << text;
    EXPECT_EQ(outcome.on_the_terminal, message) << text;
    EXPECT_EQ(outcome.printed, "") << text;
    EXPECT_TRUE(outcome.calls.empty()) << text;
  }
}

TEST(MonitorSwitch, UsesTheOwnPortAsItIs) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"0", "off 0"}, {"012", "off 12"}, {"99999999999999999999", "off 9223372036854775807"}};
  for (const auto& [own, call] : rows) {
    MemoryPorts ports;
    EXPECT_EQ(Switch("OFF %", own, ports).calls, std::vector<std::string>{call}) << own;
  }
}

TEST(MonitorSwitch, EndsWithTheErrorNumber) {
  const std::vector<std::pair<int, int>> rows = {
      {1, 1},     {2, 2},     {22, 22},  {111, 111}, {254, 254},       {255, 255},
      {256, 255}, {512, 255}, {-1, 255}, {-5, 255},  {2147483647, 255}};
  for (const auto& [error, status] : rows) {
    MemoryPorts ports;
    ports.port_results = {{5, error}};
    const Outcome outcome = Switch("OFF 5", "0", ports);
    EXPECT_EQ(outcome.status, status) << error;
    EXPECT_EQ(outcome.printed,
              "ptick: Error number " + std::to_string(error) + " executing command\n");
  }
}

TEST(MonitorSwitch, SaysOnStandardOutputThatItFailed) {
  for (const std::string text : {"ON 5 f o", "OFF 5"}) {
    MemoryPorts ports;
    ports.port_results = {{5, 16}};
    const Outcome outcome = Switch(text, "0", ports);
    EXPECT_EQ(outcome.status, 16) << text;
    EXPECT_EQ(outcome.printed, "ptick: Error number 16 executing command\n") << text;
    EXPECT_EQ(outcome.on_the_terminal, "") << text;
  }
}

}  // namespace

}  // namespace ptick
