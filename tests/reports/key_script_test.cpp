#include "reports/key_script.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "support/report_run.h"

namespace ptick {

namespace {

class KeyScriptTest : public ReportTest {
 protected:
  KeyScriptTest() {
    options_.KeyScriptFile = "keys.txt";
    platform_.clock = 45296;  // 12:34:56
    platform_.own_port = "7";
    platform_.account = "mavro";
  }

  Printed Write() { return Run(WriteKeyScript); }

  // What the shell command was given to read.
  std::string Script() {
    Write();
    return platform_.shell_runs.back().input;
  }
};

const std::string kBanner =
    "*\n"
    "* This script created at 12:34:56 01 JAN 1970 , port 7 , account mavro\n"
    "*\n";

TEST_F(KeyScriptTest, FramesTheRecordedInput) {
  tables_.ProgramCommand = "PROG -JP X";
  tables_.Hertz = "100";
  tables_.TypeRate = TypingRate{"20", "500"};
  tables_.Inputs.Add(ClockSetting::Kind::kHertz, "100");
  tables_.Inputs.Add(ClockSetting::Kind::kStartClock, "50");
  tables_.Inputs.Add({{"13", "3", "200", "200"}, "abc"});
  tables_.Inputs.Add({{"9", "1", "200", "200"}, "x"});
  EXPECT_EQ(Script(), kBanner +
                          "PROGRAM \"PROG -J X\" STDOUT \"-\" STDERR \"-\"\n"
                          "PipeNumber = $PIPE\n"
                          "TYPEDELAY 0.25\n"
                          "SLEEP 1.5\n"
                          "INPUT \"abc\"\n"
                          "INPUT \"x~009\" NOCR\n"
                          "WAIT PIPE PipeNumber\n");
}

TEST_F(KeyScriptTest, IsJustTheBannerForAnEmptyProfile) { EXPECT_EQ(Script(), kBanner); }

TEST_F(KeyScriptTest, HasInputWithoutProgramAndClockRate) {
  tables_.Inputs.Add({{"0", "0", "100", "200"}, ""});
  EXPECT_EQ(Script(), kBanner + "INPUT \"\" NOCR\n");
}

TEST_F(KeyScriptTest, ReplacesTheProfilingSwitchOfTheCommand) {
  struct Row {
    std::string_view command;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {"PROG -JP X", "PROG -J X"},
      {"PROG -JP -JP", "PROG -J -J"},
      {"PROG -JPX", "PROG -JX"},
      {"PROG -JPP", "PROG -JP"},
      {"PROG -JP", "PROG -J"},
      {"-JP PROG", "-JP PROG"},
      {"PROG-JP", "PROG-JP"},
      {"PROG -jp", "PROG -jp"},
      {"PROG -J -P", "PROG -J -P"},
      {"PROG \"a\" 'b'", "PROG \"a\" 'b'"},
      {" ", " "},
      {"PROG -JP  ", "PROG -J  "},
      {"PR\xffG ~ $x", "PR\xffG ~ $x"},
  };
  for (const Row& row : rows) {
    tables_.ProgramCommand = row.command;
    EXPECT_EQ(Script(), kBanner + "PROGRAM \"" + std::string(row.want) +
                            "\" STDOUT \"-\" STDERR \"-\"\nPipeNumber = $PIPE\n"
                            "WAIT PIPE PipeNumber\n")
        << row.command;
  }
}

TEST_F(KeyScriptTest, GivesTheTypingDelayOfTheWholeRun) {
  struct Row {
    std::optional<TypingRate> rate;
    std::string_view Hertz;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {TypingRate{"20", "500"}, "100", "TYPEDELAY 0.25\n"},
      {TypingRate{"3", "100"}, "100", "TYPEDELAY 0.3333\n"},
      {TypingRate{"0", "500"}, "100", "TYPEDELAY 5\n"},
      {TypingRate{"0.00", "500"}, "100", "TYPEDELAY 5\n"},
      {TypingRate{"-0", "500"}, "100", "TYPEDELAY 5\n"},
      {TypingRate{"", "500"}, "100", "TYPEDELAY 0\n"},
      {TypingRate{"abc", "500"}, "100", "TYPEDELAY 0\n"},
      {TypingRate{"20", ""}, "100", "TYPEDELAY 0\n"},
      {TypingRate{"", ""}, "100", "TYPEDELAY 0\n"},
      {TypingRate{"-20", "500"}, "100", "TYPEDELAY -0.25\n"},
      {TypingRate{"20", "500"}, "0", "TYPEDELAY 0\n"},
      {TypingRate{"20", "500"}, "abc", "TYPEDELAY 0\n"},
      {TypingRate{"20", "500"}, "", ""},
      {std::nullopt, "100", ""},
  };
  for (const Row& row : rows) {
    tables_.TypeRate = row.rate;
    tables_.Hertz = row.Hertz;
    options_.TypeRateOption = false;
    EXPECT_EQ(Script(), kBanner + std::string(row.want)) << row.want << " " << row.Hertz;
    options_.TypeRateOption = true;
    EXPECT_EQ(Script(), kBanner) << row.want << " " << row.Hertz;
  }
}

TEST_F(KeyScriptTest, DatesTheScriptInLocalTime) {
  platform_.zone = [](std::int64_t) { return 12 * 3600; };
  platform_.own_port = "007";
  platform_.account = "an account";
  EXPECT_EQ(Script(),
            "*\n"
            "* This script created at 00:34:56 02 JAN 1970 , port 007 , account an account\n"
            "*\n");
}

TEST_F(KeyScriptTest, BreaksTheBannerAtFieldMarks) {
  platform_.account =
      "a\xfe"
      "b\xfd"
      "c";
  EXPECT_EQ(Script(),
            "*\n"
            "* This script created at 12:34:56 01 JAN 1970 , port 7 , account a\nb\xfd"
            "c\n"
            "*\n");
}

TEST_F(KeyScriptTest, NamesTheFileForTheShellAndTheUser) {
  struct Row {
    std::string name;
    std::string word;
  };
  const std::vector<Row> rows = {
      {"keys.txt", "keys.txt"},
      {"/tmp/a-b_c+d,e:f@g%h.09AZaz", "/tmp/a-b_c+d,e:f@g%h.09AZaz"},
      {"a b", "'a b'"},
      {"x; rm -rf y", "'x; rm -rf y'"},
      {"$HOME", "'$HOME'"},
      {"`id`", "'`id`'"},
      {"it's", R"('it'\''s')"},
      {"'", R"(''\''')"},
      {"~", "'~'"},
      {"*", "'*'"},
      {"a\"b", "'a\"b'"},
      {"a\\b", R"('a\b')"},
      {"a\nb", "'a\nb'"},
      {"a=b", "'a=b'"},
      {"#x", "'#x'"},
      {"&1", "'&1'"},
      {"\xc3\xa9", "'\xc3\xa9'"},
  };
  for (const Row& row : rows) {
    options_.KeyScriptFile = row.name;
    const Printed printed = Write();
    EXPECT_EQ(platform_.shell_runs.back().command_line, "dcopy > " + row.word);
    EXPECT_EQ(printed.lines, "Keyboard profile written to '" + row.name + "'\n");
    EXPECT_EQ(printed.terminal, "");
    EXPECT_EQ(printed.stopped, std::nullopt);
  }
}

TEST_F(KeyScriptTest, StopsSilentlyWhenTheCopyFails) {
  for (const int status : {1, 2, 127, 141, 255}) {
    platform_.shell_status = status;
    const Printed printed = Write();
    EXPECT_EQ(printed.stopped, 1) << status;
    EXPECT_EQ(printed.lines, "") << status;
    EXPECT_EQ(printed.terminal, "") << status;
  }
}

TEST_F(KeyScriptTest, HandsOverAScriptOfAnySize) {
  std::string want = kBanner;
  for (int n = 0; n < 50000; ++n) {
    tables_.Inputs.Add({{"13", "1", "1", "2"}, std::to_string(n)});
    want += "INPUT \"" + std::to_string(n) + "\"\n";
  }
  EXPECT_EQ(Script(), want);
}

}  // namespace

}  // namespace ptick
