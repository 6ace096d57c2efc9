#include "reports/performs_report.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "support/report_run.h"

namespace ptick {

namespace {

class PerformsReportTest : public ReportTest {
 protected:
  Printed Report() { return Run(ReportPerforms); }

  // The one body line of the verbose form.
  std::string VerboseLine(const PerformSample& sample) {
    options_.Verbose = true;
    options_.AllReports = true;
    tables_.Performs = Performs({sample});
    const std::string lines = Report().lines;
    const std::string titles =
        "\n"
        "Elapsed Type Ticks  CPUusr,CPUsys ProgramPerformed\n"
        "------- ---- -----  ------------- ----------------\n";
    EXPECT_EQ(lines.substr(0, titles.size()), titles);
    return lines.substr(titles.size());
  }
};

const std::string kTitle =
    "Programs PERFORMed by program PROG from profile run1" + std::string(12, ' ') + " Page 1\n";

TEST_F(PerformsReportTest, CountsDistinctCommands) {
  tables_.Performs = Performs(
      {MakePerform("LIST X"), MakePerform("SORT Y"), MakePerform("LIST X"), MakePerform("LIST X")});
  EXPECT_EQ(Report().lines, kTitle +
                                "Times      Program PERFORMed\n"
                                "3          LIST X\n"
                                "1          SORT Y\n");
}

TEST_F(PerformsReportTest, OrdersEqualCountsByText) {
  tables_.Performs = Performs({MakePerform("B*2"), MakePerform("b"), MakePerform("A*"),
                               MakePerform("b"), MakePerform("A*"), MakePerform("B*2")});
  EXPECT_EQ(Report().lines, kTitle +
                                "Times      Program PERFORMed\n"
                                "2          A*\n"
                                "2          B*2\n"
                                "2          b\n");
}

TEST_F(PerformsReportTest, SummaryHasTitlesAndRuleAmongAllReports) {
  options_.AllReports = true;
  tables_.Performs = Performs({MakePerform("WHO")});
  EXPECT_EQ(Report().lines,
            "\n"
            "Times      Program PERFORMed\n"
            "-----      ------- ---------\n"
            "1          WHO\n");
}

TEST_F(PerformsReportTest, SummaryNeedsNoClockRateAndCutsNothing) {
  const std::string command = "LIST " + std::string(500, 'x') + " ";
  tables_.Performs = Performs({MakePerform(command)});
  const Printed printed = Report();
  EXPECT_EQ(printed.lines, kTitle + "Times      Program PERFORMed\n1          " + command + "\n");
  EXPECT_EQ(printed.stopped, std::nullopt);
  EXPECT_EQ(printed.terminal, "");
}

TEST_F(PerformsReportTest, PrintsJustTheTitlesWithoutPerforms) {
  struct Row {
    bool Verbose;
    bool AllReports;
    std::string want;
  };
  const std::vector<Row> rows = {
      {false, false, kTitle + "Times      Program PERFORMed\n"},
      {true, false, kTitle + "Elapsed Type Ticks  CPUusr,CPUsys ProgramPerformed\n"},
      {false, true, "\nTimes      Program PERFORMed\n-----      ------- ---------\n"},
      {true, true,
       "\nElapsed Type Ticks  CPUusr,CPUsys ProgramPerformed\n"
       "------- ---- -----  ------------- ----------------\n"},
  };
  tables_.Hertz = "100";
  for (const Row& row : rows) {
    options_.Verbose = row.Verbose;
    options_.AllReports = row.AllReports;
    EXPECT_EQ(Report().lines, row.want) << row.Verbose << row.AllReports;
  }
}

TEST_F(PerformsReportTest, ListsEveryPerformInRecordedOrderWhenVerbose) {
  options_.Verbose = true;
  tables_.Hertz = "100";
  tables_.Performs = Performs({{"1000", "1250", "17", "150", "25", "tcl", "SORT Y"},
                               {"1300", "1300", "0", "0", "0", "sh", "LIST X"},
                               {"1400", "1433", "3", "30", "3", "tcl", "SORT Y"}});
  EXPECT_EQ(Report().lines, kTitle +
                                "Elapsed Type Ticks  CPUusr,CPUsys ProgramPerformed\n"
                                "2.5     TCL  17      1.5,0.25      SORT Y\n"
                                "0       SH   0       0,0           LIST X\n"
                                "0.33    TCL  3       0.3,0.03      SORT Y\n");
}

TEST_F(PerformsReportTest, StopsWithoutAClockRateWhenVerbose) {
  options_.Verbose = true;
  tables_.Performs = Performs({MakePerform("WHO")});
  for (const bool all_reports : {false, true}) {
    options_.AllReports = all_reports;
    const Printed printed = Report();
    EXPECT_EQ(printed.terminal, "Error! No 'hertz' is available in the profile output\n");
    EXPECT_EQ(printed.lines, "");
    EXPECT_EQ(printed.stopped, 2);
  }
}

TEST_F(PerformsReportTest, TakesAnyTextAsClockRate) {
  for (const std::string hertz : {"0", "abc", "0.0"}) {
    tables_.Hertz = hertz;
    EXPECT_EQ(VerboseLine({"1", "9", "4", "5", "6", "t", "C"}),
              "0       T    4       0,0           C\n")
        << hertz;
  }
}

TEST_F(PerformsReportTest, LaysOutEveryColumn) {
  struct Row {
    PerformSample sample;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {{"", "", "", "", "", "", "C"}, "0                    0,0           C\n"},
      {{"100", "50", "1", "", "", "x", "C"}, "-0.5    X    1       0,0           C\n"},
      {{"0", "1", "1", "1", "2", "x", "C"}, "0.01    X    1       0.01,0.02     C\n"},
      {{"abc", "100", "xyz", "q", "100", "abCDef", "c"}, "1       ABCD xyz     0,1           c\n"},
      {{"0", "1234567800", "12345678", "123456789", "987654321", "t", "C"},
       "1234567 T    1234567 1234567.89,98 C\n"},
      {{"0", "9223372036854775807", "007", "1.5", "-1", "t", "C"},
       "9223372 T    007     0.015,-0.01   C\n"},
      {{"-9223372036854775807", "9223372036854775807", " 1", "+5", "5 ", "\xe4z", "C"},
       "1844674 \xe4Z    1      0.05,0        C\n"},
  };
  tables_.Hertz = "100";
  for (const Row& row : rows) {
    EXPECT_EQ(VerboseLine(row.sample), row.want) << row.want;
  }
}

TEST_F(PerformsReportTest, CutsQuotientsLikeUnformattedNumbers) {
  tables_.Hertz = "3";
  EXPECT_EQ(VerboseLine({"0", "1", "1", "2", "100", "t", "C"}),
            "0.3333  T    1       0.6666,33.333 C\n");
}

TEST_F(PerformsReportTest, CutsTheCommandAtThePageWidth) {
  struct Row {
    std::int64_t page_width;
    std::size_t want;
  };
  const std::vector<Row> rows = {{1, 0},     {30, 0},    {35, 0},     {36, 0},
                                 {37, 1},    {80, 44},   {132, 96},   {200, 164},
                                 {335, 299}, {336, 300}, {32767, 300}};
  tables_.Hertz = "100";
  for (const Row& row : rows) {
    platform_.width = row.page_width;
    EXPECT_EQ(VerboseLine({"0", "0", "1", "0", "0", "t", std::string(300, 'c')}),
              "0       T    1       0,0           " + std::string(row.want, 'c') + "\n")
        << row.page_width;
  }
}

TEST_F(PerformsReportTest, KeepsTrailingBlanksOfTheCommand) {
  tables_.Hertz = "1";
  EXPECT_EQ(VerboseLine({"0", "0", "", "0", "0", "", "C  "}),
            "0                    0,0           C  \n");
}

TEST_F(PerformsReportTest, PrintsALongTitleWithoutPadding) {
  tables_.ProfileName = std::string(40, 'p');
  EXPECT_EQ(Report().lines, "Programs PERFORMed by program PROG from profile " +
                                std::string(40, 'p') + " Page 1\nTimes      Program PERFORMed\n");
}

}  // namespace

}  // namespace ptick
