#include <gtest/gtest.h>

#include "model/line_difference.h"
#include "model/model_cases.h"
#include "model/model_merge.h"
#include "model/model_reports.h"
#include "model/random_fields.h"
#include "value/list_operations.h"

// The model is what the program is measured by, so it is measured itself by figures worked out by
// hand.

namespace ptick::model {

namespace {

RunOptions PerProgram() {
  RunOptions options;
  options.PerProgram = true;
  return options;
}

RunOptions Ascending() {
  RunOptions options;
  options.TickOrder = SortOrder::kAscending;
  return options;
}

ModelTables Parse(const std::string& text, const RunOptions& options = {}) {
  ModelTables tables;
  EXPECT_EQ(ParseModelLines(LinesOf(text), options, tables), std::nullopt);
  return tables;
}

std::string Joined(const ValueList& list) {
  std::string joined;
  for (const Value& element : list) {
    joined += "[" + element.Text() + "]";
  }
  return joined;
}

TEST(ModelRules, LocateTellsWhereToInsert) {
  struct Row {
    Value x;
    ValueList list;
    LocateOrder order;
    bool found;
    std::int64_t position;
  };
  const std::vector<Row> rows = {
      {5, {"9", "7", "3"}, LocateOrder::kDescending, false, 3},
      {5, {"1", "4", "8"}, LocateOrder::kAscending, false, 3},
      {5, {"9", "5", "5"}, LocateOrder::kDescending, true, 2},
      {"05", {"9", "5.0"}, LocateOrder::kDescending, true, 2},
      {"abc", {"1", "0"}, LocateOrder::kDescending, true, 2},
      {"01", {"1", "01"}, LocateOrder::kNone, true, 2},
      {"2", {"1", "01"}, LocateOrder::kNone, false, 3},
      {"", {}, LocateOrder::kNone, false, 1},
      {"", {""}, LocateOrder::kNone, true, 1},
      {1, {}, LocateOrder::kAscending, false, 1},
  };
  for (const Row& row : rows) {
    const Located located = LocateIn(row.x, row.list, row.order);
    EXPECT_EQ(located.found, row.found) << row.x.Text() << " in " << Joined(row.list);
    EXPECT_EQ(located.position, row.position) << row.x.Text() << " in " << Joined(row.list);
  }
}

TEST(ModelRules, LocateAgreesWithMarkDelimitedLists) {
  RunCases(2000, [](RandomSource& random) {
    std::string text;
    for (std::size_t i = random.Below(8); i > 0; --i) {
      text += "1" + RandomTicks(random) + "\n";
    }
    const std::string x = RandomTicks(random);
    const auto order = static_cast<LocateOrder>(random.Below(3));
    return Case{{text}, [=](const Texts& texts) {
                  const std::vector<std::string> lines = LinesOf(texts.front());
                  std::string array;
                  for (const std::string& line : lines) {
                    array = Insert(array, {-1}, line);
                  }
                  const Located model = LocateIn(x, {lines.begin(), lines.end()}, order);
                  const Located marks = Locate(x, array, {}, order);
                  return FirstDifference(
                      std::to_string(model.position) + (model.found ? " found" : ""),
                      std::to_string(marks.position) + (marks.found ? " found" : ""));
                }};
  });
}

TEST(ModelRules, EqualTicksComeInReverseOrderOfArrival) {
  const std::string text =
      "PROFILE:trace\tA\t1\t5\nPROFILE:TRACE\tA\t2\t05\nPROFILE:trace\tB\t3\t7\n"
      "PROFILE:trace\tB\t4\t5\n";
  EXPECT_EQ(Joined(Parse(text).Details[0].lines), "[3][4][2][1]");
  EXPECT_EQ(Joined(Parse(text, Ascending()).Details[0].lines), "[4][2][1][3]");
  const ModelTables tables = Parse(text, PerProgram());
  EXPECT_EQ(Joined(tables.Details[0].lines), "[2][1]");
  EXPECT_EQ(Joined(tables.Details[1].ticks), "[7][5]");
}

TEST(ModelRules, TheHundredAndFirstProgramMakesRoomForElevenRows) {
  std::string text;
  for (int i = 1; i <= 100; ++i) {
    text += "PROFILE:trace\tP" + std::to_string(i) + "\t1\t1\n";
  }
  EXPECT_EQ(Parse(text, PerProgram()).details_rows, 100);
  const ModelTables tables = Parse(text + "PROFILE:trace\t\t1\t1\n", PerProgram());
  EXPECT_EQ(tables.details_rows, 111);
  EXPECT_EQ(tables.program_count, 101);
  EXPECT_EQ(tables.Details.size(), 111U);
}

TEST(ModelRules, MergesByKind) {
  const std::vector<std::string> merged = MergeModelLines(
      {{"PROFILE:startclock\t100", "PROFILE:endclock\t500", "PROFILE:hertz\t100",
        "PROFILE:trace\tP\t10\t3", "PROFILE:pid\t1", "PROFILE:ticks"},
       {"PROFILE:startclock\t90", "PROFILE:endclock\t700", "PROFILE:hertz\t50",
        "PROFILE:trace\tP\t10\t4", "PROFILE:TRACE\tP\t10\t1", " PROFILE:ticks\t1"}});
  EXPECT_EQ(JoinLines(merged),
            "PROFILE:startclock\t90\nPROFILE:endclock\t700\nPROFILE:hertz\t50\n"
            "PROFILE:trace\tP\t10\t7\nPROFILE:TRACE\tP\t10\t1\n");
}

TEST(ModelRules, SubtotalsAddWhatTheRowsShow) {
  const ModelTables tables = Parse(
      "PROFILE:ticks\t3\nPROFILE:trace\tb\t1\t1\nPROFILE:trace\tb\t2\t1\n"
      "PROFILE:trace\tB\t3\t2\nPROFILE:trace\tb\t3\t1\n",
      PerProgram());
  const std::string rule = std::string(28, ' ') + "-------- ------\n";
  EXPECT_EQ(JoinLines(ModelLineReport(tables, PerProgram())),
            "B                    3      2        66.66 \n" + rule + std::string(28, ' ') +
                "2        66.66 \n\n" +
                "b                    3      1        33.33 \n"
                "                     2      1        33.33 \n"
                "                     1      1        33.33 \n" +
                rule + std::string(28, ' ') + "3        99.99 \n\n");
}

TEST(ModelRules, SummaryPutsFrequentCommandsFirst) {
  const ModelTables tables = Parse(
      "PROFILE:perform\tcmd\tSORT Y\nPROFILE:perform\tcmd\tB*\nPROFILE:perform\tcmd\tLIST X\n"
      "PROFILE:perform\tcmd\tB\nPROFILE:perform\tcmd\tLIST X\n");
  EXPECT_EQ(JoinLines(ModelPerforms(tables)),
            "2          LIST X\n1          B\n1          B*\n1          SORT Y\n");
}

}  // namespace

}  // namespace ptick::model
