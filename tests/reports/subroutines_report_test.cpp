#include "reports/subroutines_report.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "support/report_run.h"

namespace ptick {

namespace {

class SubroutinesReportTest : public ReportTest {
 protected:
  std::string Report() { return Run(ReportSubroutines).lines; }
};

const std::string_view kHeading =
    "Subroutines called by program PROG from profile run1             Page 1\n"
    "Times       Subroutine\n";

TEST_F(SubroutinesReportTest, ListsCallsInStoredOrder) {
  tables_.Subroutines = Subroutines({{"12", "TWELVE"}, {"7", "SEVEN"}, {"5", "FIVE"}});
  EXPECT_EQ(Report(), std::string(kHeading) +
                          "12          TWELVE\n"
                          "7           SEVEN\n"
                          "5           FIVE\n");
}

TEST_F(SubroutinesReportTest, PrintsJustTheHeadingWithoutCalls) { EXPECT_EQ(Report(), kHeading); }

TEST_F(SubroutinesReportTest, HasTitlesAndRuleAmongAllReports) {
  options_.AllReports = true;
  EXPECT_EQ(Report(),
            "\n"
            "Times       Subroutine called\n"
            "-----       ---------- ------\n");
  tables_.Subroutines = Subroutines({{"3", "SUB"}});
  EXPECT_EQ(Report(),
            "\n"
            "Times       Subroutine called\n"
            "-----       ---------- ------\n"
            "3           SUB\n");
}

TEST_F(SubroutinesReportTest, IsTheSameWhenVerbose) {
  tables_.Subroutines = Subroutines({{"3", "SUB"}});
  const std::string plain = Report();
  options_.Verbose = true;
  EXPECT_EQ(Report(), plain);
}

TEST_F(SubroutinesReportTest, LaysOutEveryLine) {
  struct Row {
    std::string_view times;
    std::string_view called;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {"1234567890", "SUB", "1234567890  SUB"},
      {"12345678901", "SUB", "1234567890  SUB"},  // cut, not rounded
      {"007", "SUB", "007         SUB"},          // as it was read
      {"", "SUB", "            SUB"},             // an empty count is a count
      {"1", "", "1           "},                  // trailing blanks stay
      {"", "", "            "},
      {"abc", "a name with blanks ", "abc         a name with blanks "},
      {"1", "\xfd\x01\xff", "1           \xfd\x01\xff"},
  };
  options_.AllReports = true;
  for (const Row& row : rows) {
    tables_.Subroutines = Subroutines({{row.times, row.called}});
    EXPECT_EQ(Report(), "\nTimes       Subroutine called\n-----       ---------- ------\n" +
                            std::string(row.want) + "\n")
        << row.times << " " << row.called;
  }
}

TEST_F(SubroutinesReportTest, KeepsEqualEntriesApart) {
  tables_.Subroutines = Subroutines({{"2", "SUB"}, {"2", "SUB"}});
  EXPECT_EQ(Report(), std::string(kHeading) + "2           SUB\n2           SUB\n");
}

TEST_F(SubroutinesReportTest, PadsTheTitleToThePageWidth) {
  struct Row {
    std::int64_t page_width;
    std::size_t blanks;
  };
  const std::vector<Row> rows = {{30, 0},  {67, 0},   {68, 0},   {69, 1},
                                 {80, 12}, {132, 64}, {200, 132}};
  for (const Row& row : rows) {
    options_.ReportWidth = row.page_width - 1;
    EXPECT_EQ(Report(), "Subroutines called by program PROG from profile run1" +
                            std::string(row.blanks, ' ') + " Page 1\nTimes       Subroutine\n")
        << row.page_width;
  }
}

}  // namespace

}  // namespace ptick
