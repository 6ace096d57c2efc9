#include "reports/keyboard_lines.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "support/profiles.h"

namespace ptick {
namespace {

using testing::Tabs;
using testing::Texts;

using Lines = std::vector<std::string>;

/// What is known when an input comes.
struct Given {
  Value Hertz = "";
  Value LastClock = 0;
  bool typing_rate = false;
};

struct Result {
  Lines script;
  std::string LastClock;
};

Result Append(std::string_view record, const Given& given) {
  ProfileTables tables;
  tables.Hertz = given.Hertz;
  tables.LastClock = given.LastClock;
  AppendKeyboardLines(Tabs(record), given.typing_rate, tables);
  return {Texts(tables.KeyScript), tables.LastClock.Text()};
}

TEST(KeyboardLines, ShowTheEndOfAnInput) {
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
    const std::string record = "input|" + std::string(row.code) + "|2|100|200|ls";
    EXPECT_EQ(Append(record, {}).script, Lines{std::string(row.want)}) << row.code;
  }
}

// A line of the profile has no empty fields, but a code may be missing at its end.
TEST(KeyboardLines, ShowTheEndOfAnInputWithoutACode) {
  EXPECT_EQ(Append("input||2|100|200|ls", {}).script, Lines{R"(INPUT "ls" NOCR)"});
  EXPECT_EQ(Append("input", {}).script, Lines{R"(INPUT "" NOCR)"});
}

TEST(KeyboardLines, EscapeTheText) {
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
    EXPECT_EQ(Append("input|13|2|100|200|" + std::string(row.text), {}).script,
              Lines{std::string(row.want)})
        << row.text;
  }
}

TEST(KeyboardLines, EscapeEveryByte) {
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
    ProfileTables tables;
    AppendKeyboardLines("input\t13\t2\t1\t2\t" + text, false, tables);
    EXPECT_EQ(Texts(tables.KeyScript), Lines{"INPUT \"a" + want + "b\""}) << byte;
  }
}

TEST(KeyboardLines, BeginWithThePauseBeforeAnInput) {
  const std::string input = R"(INPUT "ls")";
  struct Row {
    Given known;
    std::string_view start;
    Lines want;
  };
  const std::vector<Row> rows = {
      {{.Hertz = 100, .LastClock = 50}, "150", {"SLEEP 1", input}},
      {{.Hertz = 100, .LastClock = 50}, "300", {"SLEEP 2.5", input}},
      {{.Hertz = 100, .LastClock = 50}, "51", {"SLEEP 0.01", input}},
      {{.Hertz = 3, .LastClock = 50}, "51", {"SLEEP 0.3333", input}},
      {{.Hertz = 3, .LastClock = 50}, "52", {"SLEEP 0.6666", input}},
      // A pause too short to be seen is a pause.
      {{.Hertz = 1000000, .LastClock = 50}, "51", {"SLEEP 0", input}},
      // No pause where there is none, or where the clock has gone back.
      {{.Hertz = 100, .LastClock = 50}, "50", {input}},
      {{.Hertz = 100, .LastClock = 50}, "49", {input}},
      {{.Hertz = 100, .LastClock = 50}, "abc", {input}},
      {{.Hertz = -100, .LastClock = 50}, "49", {"SLEEP 0.01", input}},
      {{.Hertz = "0", .LastClock = 50}, "150", {input}},
      {{.Hertz = "abc", .LastClock = 50}, "150", {input}},
      // None in front of the first input when the clock started at 0.
      {{.Hertz = 100, .LastClock = 0}, "150", {input}},
      {{.Hertz = 100, .LastClock = "0"}, "150", {input}},
      {{.Hertz = 100, .LastClock = "0.0"}, "150", {input}},
      {{.Hertz = 100, .LastClock = ""}, "150", {"SLEEP 1.5", input}},
      {{.Hertz = 100, .LastClock = -50}, "100", {"SLEEP 1.5", input}},
      // None without the number of clock ticks per second.
      {{.Hertz = "", .LastClock = 50}, "150", {input}},
  };
  for (const Row& row : rows) {
    const std::string record = "input|13|2|" + std::string(row.start) + "|400|ls";
    EXPECT_EQ(Append(record, row.known).script, row.want)
        << row.start << " after " << row.known.LastClock.Text() << " at " << row.known.Hertz.Text();
  }
}

TEST(KeyboardLines, StartTheClockAtTheEndOfAnInput) {
  struct Row {
    Given known;
    std::string_view record;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {{.Hertz = 100, .LastClock = 50}, "input|13|2|100|200|ls", "200"},
      {{.Hertz = 100, .LastClock = 0}, "input|13|2|100|200|ls", "200"},
      {{.Hertz = "0", .LastClock = 50}, "input|13|2|100|0200|ls", "0200"},
      {{.Hertz = 100, .LastClock = 50}, "input|13|2|100", ""},
      // Without clock ticks per second it stands still.
      {{.Hertz = "", .LastClock = 50}, "input|13|2|100|200|ls", "50"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Append(row.record, row.known).LastClock, row.want) << row.record;
  }
}

TEST(KeyboardLines, TellTheTypingDelayWhenAskedFor) {
  struct Row {
    std::string_view Hertz;
    std::string_view record;
    std::string_view want;  ///< empty: no delay is told
  };
  const std::vector<Row> rows = {
      // The ending character is a keystroke like the others.
      {"100", "input|13|3|100|500|abc", "TYPEDELAY 1"},
      {"100", "input|0|4|100|500|abcd", "TYPEDELAY 1"},
      {"100", "input|00|4|100|500|abcd", "TYPEDELAY 1"},
      {"100", "input|27|1|100|200|a", "TYPEDELAY 0.5"},
      {"100", "input||1|100|200|a", "TYPEDELAY 0.5"},
      {"100", "input|abc|1|100|200|a", "TYPEDELAY 0.5"},
      {"100", "input|13|2|100|200|ab", "TYPEDELAY 0.3333"},
      {"100", "input|13|5|100|200|abcde", "TYPEDELAY 0.1666"},
      {"7", "input|13|0|100|101|", "TYPEDELAY 0.1428"},
      {"100", "input|13||100|200|", "TYPEDELAY 1"},
      {"100", "input|13|abc|100|200|", "TYPEDELAY 1"},
      {"100", "input|13|2|100|100|ab", "TYPEDELAY 0"},
      {"100", "input|13|1|200|100|a", "TYPEDELAY -0.5"},
      {"0", "input|13|1|100|200|a", "TYPEDELAY 0"},
      // No keystrokes, no delay.
      {"100", "input|0|0|100|200|", ""},
      {"100", "input|0||100|200|", ""},
      {"100", "input|0|-1|100|200|", ""},
      {"100", "input|13|-1|100|200|", ""},
      {"100", "input|13|-2|100|200|", ""},
      {"", "input|13|3|100|500|abc", ""},
  };
  for (const Row& row : rows) {
    const Lines lines = Append(row.record, {.Hertz = row.Hertz, .typing_rate = true}).script;
    EXPECT_EQ(lines.size() == 2 ? lines.front() : "", row.want) << row.record;
    EXPECT_EQ(lines.back().substr(0, 6), "INPUT ") << row.record;
    EXPECT_EQ(Append(row.record, {.Hertz = row.Hertz}).script.size(), 1U) << row.record;
  }
}

TEST(KeyboardLines, StandInTheOrderPauseDelayInput) {
  EXPECT_EQ(
      Append("input|13|1|100|200|a", {.Hertz = 100, .LastClock = 50, .typing_rate = true}).script,
      (Lines{"SLEEP 0.5", "TYPEDELAY 0.5", R"(INPUT "a")"}));
}

TEST(KeyboardLines, FollowThoseOfTheInputsBefore) {
  ProfileTables tables;
  tables.Hertz = 100;
  tables.LastClock = 1000;
  AppendKeyboardLines(Tabs("input|13|1|1100|1200|a"), false, tables);
  AppendKeyboardLines(Tabs("input|0|1|1250|1300|b"), false, tables);
  AppendKeyboardLines(Tabs("input|13|1|1300|1310|c"), false, tables);
  EXPECT_EQ(Texts(tables.KeyScript),
            (Lines{"SLEEP 1", R"(INPUT "a")", "SLEEP 0.5", R"(INPUT "b" NOCR)", R"(INPUT "c")"}));
}

}  // namespace
}  // namespace ptick
