// The records of shared objects, subroutines, performed commands and inputs.

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "support/profiles.h"

namespace ptick {

namespace {

using testing::Parse;
using testing::Parsed;
using testing::Records;
using testing::ScriptLines;
using testing::Texts;

using Lines = std::vector<std::string>;

TEST(SharedObjectRecords, AreListedWhenTheirFlagIsSet) {
  struct Row {
    std::string_view record;
    Lines want;
  };
  const std::vector<Row> rows = {
      {"shared_object|lib.so|1", {"lib.so"}},
      {"SHARED_OBJECT|lib.so|1", {"lib.so"}},
      {"shared_object|lib.so|-1", {"lib.so"}},
      {"shared_object|lib.so|0.5", {"lib.so"}},
      {"shared_object|lib.so|yes", {"lib.so"}},
      {"shared_object|lib.so| ", {"lib.so"}},
      {"shared_object|lib.so|1|0", {"lib.so"}},
      {"shared_object|a lib|1", {"a lib"}},
      {"shared_object|lib.so|0", {}},
      {"shared_object|lib.so|00", {}},
      {"shared_object|lib.so|0.0", {}},
      {"shared_object|lib.so|-0", {}},
      {"shared_object|lib.so|", {}},
      {"shared_object|lib.so", {}},
      {"shared_object", {}},
      {"shared_object|main()|1", {}},
      {"shared_object|main()|0", {}},
      {"shared_object|MAIN()|1", {"MAIN()"}},
      {"shared_object|main() |1", {"main() "}},
      {"shared_object|main|1", {"main"}},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Texts(Parse(Records({row.record})).tables->SharedObjects), row.want) << row.record;
  }
}

TEST(SharedObjectRecords, StayInOrderOfArrivalWithRepetitions) {
  const std::string text =
      Records({"shared_object|b|1", "shared_object|a|1", "shared_object|c|0", "shared_object|b|1"});
  EXPECT_EQ(Texts(Parse(text).tables->SharedObjects), (Lines{"b", "a", "b"}));
}

TEST(SubroutineRecords, NameTheSecondWord) {
  struct Row {
    std::string_view record;
    std::string_view want_name;
    std::string_view want_times;
    std::string_view want_caller = "MAIN";
  };
  const std::vector<Row> rows = {
      {"subroutine_call|MAIN SUB|5", "SUB", "5"},
      {"SUBROUTINE_CALL|MAIN SUB|5", "SUB", "5"},
      {"subroutine_call|MAIN SUB MORE|5|9", "SUB", "5"},
      {"subroutine_call|MAIN  SUB|5", "", "5"},
      {"subroutine_call| SUB|5", "SUB", "5", ""},
      {"subroutine_call|MAIN|5", "", "5"},
      {"subroutine_call|MAIN |5", "", "5"},
      {"subroutine_call|MAIN|SUB|5", "", "SUB"},
      {"subroutine_call|MAIN SUB|007", "SUB", "007"},
      {"subroutine_call|MAIN SUB", "SUB", ""},
      {"subroutine_call", "", "", ""},
  };
  for (const Row& row : rows) {
    const Parsed parsed = Parse(Records({row.record}));
    const SubroutineTable& subroutines = parsed.tables->Subroutines;
    ASSERT_EQ(subroutines.Count(), 1U) << row.record;
    std::string times;
    subroutines.AppendTimes(0, times);
    EXPECT_EQ(subroutines.Called(0), row.want_name) << row.record;
    EXPECT_EQ(times, row.want_times) << row.record;
    EXPECT_EQ(subroutines.Caller(0), row.want_caller) << row.record;
  }
}

TEST(SubroutineRecords, KeepTheirCallersOnlyWhereTheyAreWanted) {
  ReadOptions options;
  options.keep_callers = false;
  const std::string text = Records({"subroutine_call|M A|5", "subroutine_call|N B|10"});
  const Parsed without = Parse(text, options);
  EXPECT_EQ(without.tables->Subroutines.Caller(1), "");
  EXPECT_EQ(without.tables->Subroutines.Called(1), "B");
  EXPECT_EQ(Parse(text).tables->Subroutines.Caller(1), "N");
}

TEST(PerformRecords, AreListedWhenTheyHaveACommand) {
  const Parsed parsed = Parse(Records(
      {"perform|ticks|5|cmd|LIST", "perform|ticks|5", "PERFORM|cmd|WHO", "perform|cmd|\xfdX",
       "perform|cmd|LIST A|B", "perform|cmd|LIST", "perform||cmd|RUN"}));
  EXPECT_EQ(
      Texts(parsed.tables->Performs),
      (Lines{"]]]]5]]]]LIST", "]]]]]]]]WHO", "]]]]]]]]LIST A\tB", "]]]]]]]]LIST", "]]]]]]]]RUN"}));
}

TEST(PerformRecords, AreCountedWhereTheyAreNotKept) {
  ReadOptions options;
  options.keep_performs = false;
  const Parsed parsed = Parse(
      Records({"perform|ticks|5|cmd|LIST", "perform|cmd|WHO", "perform|x|y", "perform|cmd|LIST"}),
      options);
  const PerformTable& performs = parsed.tables->Performs;
  EXPECT_EQ(performs.RecordCount(), 0U);
  EXPECT_EQ(performs.Count(), 3U);
  ASSERT_EQ(performs.Commands().size(), 2U);
  EXPECT_EQ(performs.TimesOf(0), 2U);
  EXPECT_EQ(performs.Commands()[0], "LIST");
}

TEST(InputRecords, AreCounted) {
  struct Row {
    std::string text;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {"", "0"},
      {Records({"input|13|2|1|2|ls"}), "1"},
      {Records({"input", "INPUT", "input|x"}), "3"},
      {Records({"input", "input", "input_count|9"}), "9"},
      {Records({"input", "input_count|9", "input", "input"}), "11"},
      {Records({"input_count|abc", "input"}), "1"},
      {Records({"input_count|1.5", "input"}), "2.5"},
      {Records({"input_count", "input"}), "1"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Parse(row.text).tables->InputCount.Text(), row.want) << row.text;
  }
}

TEST(InputRecords, AreKeptOnlyWhereTheyAreWanted) {
  const std::string text =
      Records({"hertz|100", "startclock|100", "input|13|1|200|300|a", "input|0|1|350|400|b|c"});
  ReadOptions options;
  options.keep_inputs = false;
  const Parsed without = Parse(text, options);
  EXPECT_EQ(without.tables->Inputs.Count(), 0U);
  EXPECT_TRUE(without.tables->Inputs.ClockSettings().empty());
  EXPECT_EQ(without.tables->InputCount.Text(), "2");

  const Parsed parsed = Parse(text);
  EXPECT_EQ(parsed.tables->Inputs.Count(), 2U);
  EXPECT_EQ(ScriptLines(parsed.tables->Inputs, true),
            (Lines{"SLEEP 1", "TYPEDELAY 0.5", R"(INPUT "a")", "SLEEP 0.5", "TYPEDELAY 0.5",
                   R"(INPUT "b~009c" NOCR)"}));
  EXPECT_EQ(ScriptLines(parsed.tables->Inputs),
            (Lines{"SLEEP 1", R"(INPUT "a")", "SLEEP 0.5", R"(INPUT "b~009c" NOCR)"}));
}

TEST(InputRecords, KnowTheClockFromTheRecordsBefore) {
  struct Row {
    std::string text;
    Lines want;
  };
  const std::string input = "input|13|1|200|300|a";
  const std::string line = R"(INPUT "a")";
  const std::vector<Row> rows = {
      {Records({"hertz|100", input}), {line}},
      {Records({"hertz|100", "startclock|0", input}), {line}},
      {Records({"hertz|100", "startclock|0", input, input}), {line, line}},
      {Records({"hertz|100", "startclock", input}), {"SLEEP 2", line}},
      {Records({"startclock|100", input, "hertz|100", input}), {line, "SLEEP 1", line}},
      {Records({"hertz|100", "startclock|100", "startclock|150", input}), {"SLEEP 0.5", line}},
      {Records({"hertz|100", input, "startclock|100", input}), {line, "SLEEP 1", line}},
      {Records({"hertz|100", "startclock|100", "hertz", input}), {line}},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(ScriptLines(Parse(row.text).tables->Inputs), row.want) << row.text;
  }
}

}  // namespace

}  // namespace ptick
