#include "reports/input_lines.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "profile/scan/tab_fields.h"
#include "support/profiles.h"

namespace ptick {

namespace {

using testing::Tabs;

using Lines = std::vector<std::string>;

/// What is known when an input comes.
struct Given {
  std::string_view hertz;
  std::string_view last_clock = "0";
  bool typing_rate = false;
};

KeyboardInputs InputsAfter(const Given& given) {
  KeyboardInputs inputs;
  inputs.Add(ClockSetting::Kind::kHertz, given.hertz);
  inputs.Add(ClockSetting::Kind::kStartClock, given.last_clock);
  return inputs;
}

/// Adds an input from its fields, with "|" for each TAB.
void AddInput(std::string_view record, KeyboardInputs& inputs) {
  const std::string line = Tabs(record);
  TabFields fields(line);
  KeyboardInputs::Texts texts;
  for (std::string_view& number : texts.numbers) {
    number = fields.Next();
  }
  texts.text = fields.Rest();
  inputs.Add(texts);
}

/// The lines for one input.
Lines LinesOf(std::string_view record, const Given& given) {
  KeyboardInputs inputs = InputsAfter(given);
  AddInput(record, inputs);
  return testing::ScriptLines(inputs, given.typing_rate);
}

TEST(InputLinesTest, ShowTheEndOfAnInput) {
  struct Row {
    std::string_view code;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {"13", R"(INPUT "ls")"},
      {"10", R"(INPUT "ls")"},
      {"013", R"(INPUT "ls")"},
      {"10.0", R"(INPUT "ls")"},
      {"0", R"(INPUT "ls" NOCR)"},
      {"00", R"(INPUT "ls" NOCR)"},
      {"0.0", R"(INPUT "ls" NOCR)"},
      {"-0", R"(INPUT "ls" NOCR)"},
      {"9", R"(INPUT "ls~009" NOCR)"},
      {"27", R"(INPUT "ls~027" NOCR)"},
      {"11", R"(INPUT "ls~011" NOCR)"},
      {"12", R"(INPUT "ls~012" NOCR)"},
      {"65", R"(INPUT "lsA" NOCR)"},
      {"34", R"(INPUT "ls~"" NOCR)"},
      {"126", R"(INPUT "ls~~" NOCR)"},
      {"127", R"(INPUT "ls~127" NOCR)"},
      {"255", R"(INPUT "ls~255" NOCR)"},
      // Codes are taken modulo 256, and what is not numeric counts as 0.
      {"256", R"(INPUT "ls~000" NOCR)"},
      {"269", R"(INPUT "ls~013" NOCR)"},
      {"-1", R"(INPUT "ls~255" NOCR)"},
      {"abc", R"(INPUT "ls~000" NOCR)"},
  };
  for (const Row& row : rows) {
    const std::string record = "" + std::string(row.code) + "|2|100|200|ls";
    EXPECT_EQ(LinesOf(record, {}), Lines{std::string(row.want)}) << row.code;
  }
}

// A line of the profile has no empty fields, but a code may be missing at its end.
TEST(InputLinesTest, ShowTheEndOfAnInputWithoutACode) {
  EXPECT_EQ(LinesOf("|2|100|200|ls", {}), Lines{R"(INPUT "ls" NOCR)"});
  EXPECT_EQ(LinesOf("", {}), Lines{R"(INPUT "" NOCR)"});
}

TEST(InputLinesTest, EscapeTheText) {
  struct Row {
    std::string_view text;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {"", R"(INPUT "")"},
      {"LIST CUST", R"(INPUT "LIST CUST")"},
      {"  two  blanks  ", R"(INPUT "  two  blanks  ")"},
      {R"(say "hi")", R"(INPUT "say ~"hi~"")"},
      {"~", R"(INPUT "~~")"},
      {"a~~b", R"(INPUT "a~~~~b")"},
      {"a|b|", R"(INPUT "a~009b~009")"},
      {"\x1b[A", R"(INPUT "~027[A")"},
      {"it's", R"(INPUT "it's")"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(LinesOf("13|2|100|200|" + std::string(row.text), {}), Lines{std::string(row.want)})
        << row.text;
  }
}

TEST(InputLinesTest, EscapeEveryByte) {
  for (int byte = 0; byte < 256; ++byte) {
    std::string want(1, static_cast<char>(byte));
    if (byte == '"' || byte == '~') {
      want.insert(0, "~");
    } else if (byte < 32 || byte > 126) {
      std::array<char, 8> code{};
      std::snprintf(code.data(), code.size(), "~%03d", byte);
      want = code.data();
    }
    const std::string text = std::string("a") + static_cast<char>(byte) + "b";
    KeyboardInputs inputs;
    inputs.Add({{"13", "2", "1", "2"}, text});
    std::string script;
    InputLines(false).AppendAll(inputs, script);
    EXPECT_EQ(script, "INPUT \"a" + want + "b\"\n") << byte;
  }
}

TEST(InputLinesTest, BeginWithThePauseBeforeAnInput) {
  const std::string input = R"(INPUT "ls")";
  struct Row {
    Given known;
    std::string_view start;
    Lines want;
  };
  const std::vector<Row> rows = {
      {{.hertz = "100", .last_clock = "50"}, "150", {"SLEEP 1", input}},
      {{.hertz = "100", .last_clock = "50"}, "300", {"SLEEP 2.5", input}},
      {{.hertz = "100", .last_clock = "50"}, "51", {"SLEEP 0.01", input}},
      {{.hertz = "3", .last_clock = "50"}, "51", {"SLEEP 0.3333", input}},
      {{.hertz = "3", .last_clock = "50"}, "52", {"SLEEP 0.6666", input}},
      // A pause too short to be seen is a pause.
      {{.hertz = "1000000", .last_clock = "50"}, "51", {"SLEEP 0", input}},
      // No pause where there is none, or where the clock has gone back.
      {{.hertz = "100", .last_clock = "50"}, "50", {input}},
      {{.hertz = "100", .last_clock = "50"}, "49", {input}},
      {{.hertz = "100", .last_clock = "50"}, "abc", {input}},
      {{.hertz = "-100", .last_clock = "50"}, "49", {"SLEEP 0.01", input}},
      {{.hertz = "0", .last_clock = "50"}, "150", {input}},
      {{.hertz = "abc", .last_clock = "50"}, "150", {input}},
      // None before the first input when the clock started at 0.
      {{.hertz = "100", .last_clock = "0"}, "150", {input}},
      {{.hertz = "100", .last_clock = "0"}, "150", {input}},
      {{.hertz = "100", .last_clock = "0.0"}, "150", {input}},
      {{.hertz = "100", .last_clock = ""}, "150", {"SLEEP 1.5", input}},
      {{.hertz = "100", .last_clock = "-50"}, "100", {"SLEEP 1.5", input}},
      // None without the number of clock ticks per second.
      {{.hertz = "", .last_clock = "50"}, "150", {input}},
  };
  for (const Row& row : rows) {
    const std::string record = "13|2|" + std::string(row.start) + "|400|ls";
    EXPECT_EQ(LinesOf(record, row.known), row.want)
        << row.start << " after " << row.known.last_clock << " at " << row.known.hertz;
  }
}

TEST(InputLinesTest, MeasureAPauseFromTheEndOfTheInputBefore) {
  struct Row {
    Given known;
    std::string_view record;
    std::string_view want;  ///< the pause before an input at clock 1000
  };
  const std::vector<Row> rows = {
      {{.hertz = "100", .last_clock = "50"}, "13|2|100|200|ls", "SLEEP 8"},
      {{.hertz = "100", .last_clock = "0"}, "13|2|100|200|ls", "SLEEP 8"},
      {{.hertz = "100", .last_clock = "50"}, "13|2|100|0200|ls", "SLEEP 8"},
      {{.hertz = "100", .last_clock = "50"}, "13|2|100", "SLEEP 10"},
      // Without clock ticks per second the clock stays where it was.
      {{.hertz = "", .last_clock = "50"}, "13|2|100|200|ls", "SLEEP 9.5"},
  };
  for (const Row& row : rows) {
    KeyboardInputs inputs = InputsAfter(row.known);
    AddInput(row.record, inputs);
    inputs.Add(ClockSetting::Kind::kHertz, "100");
    AddInput("13|1|1000|1100|x", inputs);
    const Lines lines = testing::ScriptLines(inputs);
    ASSERT_GE(lines.size(), 2U) << row.record;
    EXPECT_EQ(lines[lines.size() - 2], row.want) << row.record;
  }
}

TEST(InputLinesTest, GoByTheLastSettingOfTheClockBeforeAnInput) {
  KeyboardInputs inputs;
  inputs.Add(ClockSetting::Kind::kStartClock, "7");
  inputs.Add(ClockSetting::Kind::kHertz, "1");
  inputs.Add(ClockSetting::Kind::kStartClock, "100");
  inputs.Add(ClockSetting::Kind::kHertz, "10");
  EXPECT_EQ(inputs.ClockSettings().size(), 2U);
  AddInput("13|1|150|200|a", inputs);
  inputs.Add(ClockSetting::Kind::kStartClock, "300");
  AddInput("13|1|310|320|b", inputs);
  inputs.Add(ClockSetting::Kind::kHertz, "");
  AddInput("13|1|400|410|c", inputs);
  EXPECT_EQ(testing::ScriptLines(inputs),
            (Lines{"SLEEP 5", R"(INPUT "a")", "SLEEP 1", R"(INPUT "b")", R"(INPUT "c")"}));
}

TEST(InputLinesTest, TellTheTypingDelayWhenAskedFor) {
  struct Row {
    std::string_view hertz;
    std::string_view record;
    std::string_view want;  ///< empty: no delay is told
  };
  const std::vector<Row> rows = {
      // The ending character is a keystroke like the others.
      {"100", "13|3|100|500|abc", "TYPEDELAY 1"},
      {"100", "0|4|100|500|abcd", "TYPEDELAY 1"},
      {"100", "00|4|100|500|abcd", "TYPEDELAY 1"},
      {"100", "27|1|100|200|a", "TYPEDELAY 0.5"},
      {"100", "|1|100|200|a", "TYPEDELAY 0.5"},
      {"100", "abc|1|100|200|a", "TYPEDELAY 0.5"},
      {"100", "13|2|100|200|ab", "TYPEDELAY 0.3333"},
      {"100", "13|5|100|200|abcde", "TYPEDELAY 0.1666"},
      {"7", "13|0|100|101|", "TYPEDELAY 0.1428"},
      {"100", "13||100|200|", "TYPEDELAY 1"},
      {"100", "13|abc|100|200|", "TYPEDELAY 1"},
      {"100", "13|2|100|100|ab", "TYPEDELAY 0"},
      {"100", "13|1|200|100|a", "TYPEDELAY -0.5"},
      {"0", "13|1|100|200|a", "TYPEDELAY 0"},
      // No keystrokes, no delay.
      {"100", "0|0|100|200|", ""},
      {"100", "0||100|200|", ""},
      {"100", "0|-1|100|200|", ""},
      {"100", "13|-1|100|200|", ""},
      {"100", "13|-2|100|200|", ""},
      {"", "13|3|100|500|abc", ""},
  };
  for (const Row& row : rows) {
    const Lines lines = LinesOf(row.record, {.hertz = row.hertz, .typing_rate = true});
    EXPECT_EQ(lines.size() == 2 ? lines.front() : "", row.want) << row.record;
    EXPECT_EQ(lines.back().substr(0, 6), "INPUT ") << row.record;
    EXPECT_EQ(LinesOf(row.record, {.hertz = row.hertz}).size(), 1U) << row.record;
  }
}

TEST(InputLinesTest, ComeInTheOrderPauseDelayInput) {
  EXPECT_EQ(LinesOf("13|1|100|200|a", {.hertz = "100", .last_clock = "50", .typing_rate = true}),
            (Lines{"SLEEP 0.5", "TYPEDELAY 0.5", R"(INPUT "a")"}));
}

TEST(InputLinesTest, FollowThoseOfTheInputsBefore) {
  KeyboardInputs inputs = InputsAfter({.hertz = "100", .last_clock = "1000"});
  AddInput("13|1|1100|1200|a", inputs);
  AddInput("0|1|1250|1300|b", inputs);
  AddInput("13|1|1300|1310|c", inputs);
  EXPECT_EQ(testing::ScriptLines(inputs),
            (Lines{"SLEEP 1", R"(INPUT "a")", "SLEEP 0.5", R"(INPUT "b" NOCR)", R"(INPUT "c")"}));
}

}  // namespace

}  // namespace ptick
