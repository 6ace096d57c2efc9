#include "portctl/control_message.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "output/output.h"
#include "support/memory_console.h"
#include "support/memory_ports.h"

namespace ptick {

namespace {

using Calls = std::vector<std::string>;

TEST(ControlCallSplit, JoinsWhatStandsBehindTheFirstArgument) {
  struct Row {
    std::vector<std::string> arguments;
    std::string target_port;
    std::string control_text;
  };
  const std::vector<Row> rows = {
      {{}, "", ""},
      {{""}, "", ""},
      {{"5"}, "5", ""},
      {{"5", "STOP"}, "5", "STOP"},
      {{"5", "DUMP", "NOW"}, "5", "DUMP NOW"},
      {{"5", "DUMP NOW"}, "5", "DUMP NOW"},
      {{"5", " a ", "b  c"}, "5", " a  b  c"},
      {{"5", ""}, "5", ""},
      {{"5", "", ""}, "5", " "},
      {{"5", "", "x", ""}, "5", " x "},
      {{"", "5", "STOP"}, "", "5 STOP"},
      {{"-j", "ON", "5"}, "-j", "ON 5"},
      {{"5", "'a'", "\"b\""}, "5", "'a' \"b\""},
      {{"5",
        "a\xFE"
        "b"},
       "5",
       "a b"},
      {{"5", "\xFE"}, "5", " "},
      {{"5",
        "a\xFD"
        "b\xFC\xFF"},
       "5",
       "a\xFD"
       "b\xFC\xFF"},
      {{"5\xFE"
        "STOP"},
       "5",
       "STOP"},
      {{"5\xFE"
        "STOP",
        "NOW"},
       "5",
       "STOP NOW"},
      {{"\xFE"
        "5"},
       "",
       "5"},
  };
  for (const Row& row : rows) {
    const ControlCall call = SplitControlCall(row.arguments);
    const std::string all = ::testing::PrintToString(row.arguments);
    EXPECT_EQ(call.target_port, row.target_port) << all;
    EXPECT_EQ(call.control_text, row.control_text) << all;
  }
}

class ControlMessages : public ::testing::Test {
 protected:
  /// Makes the call and writes out what it prints; whether it was taken.
  bool Send(const std::string& target_port, const std::string& control_text) {
    ports_.port_calls.clear();
    console_.printed.clear();
    Output output(console_, "ptick");
    const bool taken = SendControlMessages({target_port, control_text}, ports_, output);
    output.Finish();
    EXPECT_EQ(console_.on_terminal, "");
    return taken;
  }

  MemoryConsole console_;
  MemoryPorts ports_;
};

TEST_F(ControlMessages, GoToOnePort) {
  ports_.port_results = {{5, 0}};
  EXPECT_TRUE(Send("5", "DUMP NOW"));
  EXPECT_EQ(ports_.port_calls, Calls{"send 5 TICKCTL:DUMP NOW"});
  EXPECT_EQ(console_.printed, "Message sent successfully to port 5\n");
}

TEST_F(ControlMessages, ShowThePortAsItWasTypedAndUseItAsANumber) {
  struct Row {
    std::string target_port;
    std::string call;
    std::string printed;
  };
  const std::vector<Row> rows = {
      {"007", "send 7 TICKCTL:X", "Message sent successfully to port 007\n"},
      {"0", "send 0 TICKCTL:X", "Error number 2 sending message to port 0\n"},
      {"000", "send 0 TICKCTL:X", "Error number 2 sending message to port 000\n"},
      {"8", "send 8 TICKCTL:X", "Error number 11 sending message to port 8\n"},
      {"2147483648", "send 2147483648 TICKCTL:X",
       "Error number 2 sending message to port 2147483648\n"},
      {"9223372036854775807", "send 9223372036854775807 TICKCTL:X",
       "Error number 2 sending message to port 9223372036854775807\n"},
      {"99999999999999999999", "send 9223372036854775807 TICKCTL:X",
       "Error number 2 sending message to port 99999999999999999999\n"},
  };
  ports_.port_results = {{7, 0}, {8, 11}};
  for (const Row& row : rows) {
    EXPECT_TRUE(Send(row.target_port, "X"));
    EXPECT_EQ(ports_.port_calls, Calls{row.call});
    EXPECT_EQ(console_.printed, row.printed);
  }
}

TEST_F(ControlMessages, PrintTheErrorNumberWhateverItIs) {
  for (const int error : {1, 13, 111, 256, -1}) {
    ports_.port_results = {{5, error}};
    EXPECT_TRUE(Send("5", "X"));
    EXPECT_EQ(console_.printed,
              "Error number " + std::to_string(error) + " sending message to port 5\n");
  }
}

TEST_F(ControlMessages, AreSentWithNothingButABlank) {
  ports_.port_results = {{5, 0}};
  EXPECT_TRUE(Send("5", " "));
  EXPECT_EQ(ports_.port_calls, Calls{"send 5 TICKCTL: "});
}

TEST_F(ControlMessages, AreLeftToTheReportsInAnyOtherForm) {
  const std::vector<std::vector<std::string>> rows = {
      {"", ""},
      {"", "X"},
      {"5", ""},
      {"007", ""},
      {"+5", "X"},
      {"-5", "X"},
      {"5a", "X"},
      {"05-x", "X"},
      {"5-", "X"},
      {"-", "X"},
      {"5--7", "X"},
      {"5-7-9", "X"},
      {"5 -7", "X"},
      {" 5", "X"},
      {"5 ", "X"},
      {"5.5", "X"},
      {"5\n", "X"},
      {"run1", "X"},
      {"-j", "ON"},
      {"1-2a", "X"},
      {"a1-2", "X"},
      {"%", "X"},
      {"5,7", "X"},
      {"-5-7", "X"},
      {"5-+7", "X"},
      {"5\xE2\x80\x93"
       "7",
       "X"},
  };
  for (const auto& row : rows) {
    EXPECT_FALSE(Send(row[0], row[1])) << row[0];
    EXPECT_EQ(ports_.port_calls, Calls{}) << row[0];
    EXPECT_EQ(console_.printed, "") << row[0];
  }
}

TEST_F(ControlMessages, GoToEachListeningPortOfARangeInOrder) {
  ports_.port_results = {{2, 0}, {3, 0}, {5, 111}, {9, 0}, {10, 0}};
  EXPECT_TRUE(Send("3-9", "DUMP NOW"));
  EXPECT_EQ(ports_.port_calls, (Calls{"list 3 9", "send 3 TICKCTL:DUMP NOW",
                                      "send 5 TICKCTL:DUMP NOW", "send 9 TICKCTL:DUMP NOW"}));
  EXPECT_EQ(console_.printed, "Message sent successfully to 2 ports and failed to 5 ports\n");
}

TEST_F(ControlMessages, AreBareInARangeWithoutCommands) {
  ports_.port_results = {{3, 0}, {4, 0}};
  EXPECT_TRUE(Send("3-4", ""));
  EXPECT_EQ(ports_.port_calls, (Calls{"list 3 4", "send 3 TICKCTL:", "send 4 TICKCTL:"}));
  EXPECT_EQ(console_.printed, "Message sent successfully to 2 ports and failed to 0 ports\n");
}

TEST_F(ControlMessages, AreCountedOverTheWholeRange) {
  struct Row {
    std::string range;
    std::string sent;
    std::string failed;
  };
  const std::vector<Row> rows = {
      {"7-7", "1", "0"},
      {"007-7", "1", "0"},
      {"8-8", "0", "1"},
      {"6-8", "1", "2"},
      {"06-0008", "1", "2"},
      {"9-7", "0", "0"},
      {"10-9", "0", "0"},
      {"9-10", "0", "2"},
      {"0-0", "0", "1"},
      {"00-0", "0", "1"},
      {"1-000", "0", "0"},
      {"0-999999999", "1", "999999999"},
      {"2147483647-2147483648", "0", "2"},
      {"0-999999999999999999", "1", "999999999999999999"},
      {"100000000000000000-999999999999999999", "0", "900000000000000000"},
      {"1-9223372036854775807", "1", "9223372036854775806"},
      {"9223372036854775806-9223372036854775807", "0", "2"},
      {"9223372036854775807-9223372036854775807", "0", "1"},
      // Beyond 64 bits: as floating numbers have it.
      {"0-99999999999999999999", "1", "100000000000000000000"},
      {"99999999999999999999-1", "0", "0"},
      {"99999999999999999999-99999999999999999998", "0", "0"},
      {"099999999999999999998-99999999999999999998", "0", "1"},
  };
  ports_.port_results = {{7, 0}};
  for (const Row& row : rows) {
    EXPECT_TRUE(Send(row.range, "X")) << row.range;
    EXPECT_EQ(console_.printed, "Message sent successfully to " + row.sent +
                                    " ports and failed to " + row.failed + " ports\n")
        << row.range;
  }
}

TEST_F(ControlMessages, SurviveRangesOfAnyLength) {
  const std::string digits(5000, '9');
  ports_.port_results = {{7, 0}};
  EXPECT_TRUE(Send("0-" + digits, "X"));
  EXPECT_TRUE(console_.printed.starts_with("Message sent successfully to 1 ports and failed to "));
  EXPECT_TRUE(Send(digits + "-" + digits, "X"));
  EXPECT_EQ(console_.printed, "Message sent successfully to 0 ports and failed to 1 ports\n");
  EXPECT_TRUE(Send(digits + "-0", "X"));
  EXPECT_EQ(console_.printed, "Message sent successfully to 0 ports and failed to 0 ports\n");
}

}  // namespace

}  // namespace ptick
