#include "reports/line_report.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "profile/ticks/sort_order.h"
#include "support/profiles.h"
#include "support/report_run.h"

namespace ptick {

namespace {

using testing::Records;

class LineReportTest : public ReportTest {
 protected:
  LineReportTest() { options_.ReportWidth = 79; }

  /// The report of a profile named "run1".
  std::string Report(std::string_view profile) {
    tables_ = std::move(*testing::Parse(profile).tables);
    tables_.ProfileName = "run1";
    return Run(PrintLineReport).lines;
  }

  /// The same without its heading.
  std::string Body(std::string_view profile) {
    const std::string report = Report(profile);
    return report.substr(report.find('\n', report.find('\n') + 1) + 1);
  }

  /// Opens a source file of these records, after those open already.
  void OpenSource(const std::string& name, MemoryPlatform::Directory records) {
    platform_.files[name] = std::move(records);
    options_.SourceFiles.push_back({name, platform_.OpenFile(name)});
  }
};

const std::string_view kColumns = "Source name          Line#  Ticks    %      ";

TEST_F(LineReportTest, HasAHeadingAndARowPerEntry) {
  const std::string title = "Profile of program PROG from profile run1";
  EXPECT_EQ(Report(Records({"program|PROG -JP", "ticks|12", "trace|PROG|10|3", "trace|SUB|7|6",
                            "trace|PROG|20|3"})),
            title + std::string(79 - title.size() - 15, ' ') + " Page 1\n" + std::string(kColumns) +
                "\n"
                "SUB                  7      6        50    \n"
                "PROG                 20     3        25    \n"
                "                     10     3        25    \n");
}

TEST_F(LineReportTest, IsJustTheHeadingWithoutEntries) {
  for (const bool per_program : {false, true}) {
    for (const bool cpu : {false, true}) {
      options_.PerProgram = per_program;
      options_.CpuOption = cpu;
      EXPECT_EQ(Body(Records({"ticks|12"})), "");
      EXPECT_EQ(Body(""), "");
    }
  }
}

TEST_F(LineReportTest, PadsItsTitleToThePageWidth) {
  struct Row {
    std::int64_t page_width;
    std::size_t want_blanks;
  };
  // The title is 41 bytes long.
  const std::vector<Row> rows = {{1, 0}, {56, 0}, {57, 0}, {58, 1}, {80, 23}, {132, 75}};
  for (const Row& row : rows) {
    options_.ReportWidth = row.page_width - 1;
    const std::string report = Report(Records({"program|PROG"}));
    EXPECT_EQ(report, "Profile of program PROG from profile run1" +
                          std::string(row.want_blanks, ' ') + " Page 1\n" + std::string(kColumns) +
                          "\n")
        << row.page_width;
  }
}

TEST_F(LineReportTest, NamesProgramsAsTheyAre) {
  EXPECT_EQ(Report(Records({"program|'PL'X"})).substr(0, 43),
            "Profile of program 'PL'X from profile run1 ");
  EXPECT_EQ(Report(Records({"ticks|1"})).substr(0, 47),
            "Profile of program (unknown) from profile run1 ");
}

TEST_F(LineReportTest, ShowsNamesWhereTheyChange) {
  EXPECT_EQ(Body(Records({"ticks|100", "trace|A|1|9", "trace|B|1|8", "trace|A|2|7"})),
            "A                    1      9        9     \n"
            "B                    1      8        8     \n"
            "A                    2      7        7     \n");
}

TEST_F(LineReportTest, SortsByIncreasingTicksWhenAskedFor) {
  options_.TickOrder = SortOrder::kAscending;
  EXPECT_EQ(Body(Records({"ticks|100", "trace|A|1|9", "trace|B|1|8", "trace|A|2|7"})),
            "A                    2      7        7     \n"
            "B                    1      8        8     \n"
            "A                    1      9        9     \n");
}

// Three programs: b with 5 + 1 ticks, B with 6, a with 20.
const std::string_view kThreePrograms =
    "PROFILE:ticks\t30\n"
    "PROFILE:trace\tb\t1\t5\n"
    "PROFILE:trace\tB\t2\t6\n"
    "PROFILE:trace\ta\t3\t20\n"
    "PROFILE:trace\tb\t4\t1\n";

const std::string kRule = std::string(28, ' ') + "-------- ------\n";
const std::string kGroupOfSmallB = "b                    1      5        16.66 \n" +
                                   std::string("                     4      1        3.33  \n") +
                                   kRule + "                            6        19.99 \n\n";
const std::string kGroupOfBigB = "B                    2      6        20    \n" + kRule +
                                 "                            6        20    \n\n";
const std::string kGroupOfA = "a                    3      20       66.66 \n" + kRule +
                              "                            20       66.66 \n\n";

TEST_F(LineReportTest, GroupsByProgramInTheOrderOfNames) {
  options_.PerProgram = true;
  EXPECT_EQ(Body(kThreePrograms), kGroupOfBigB + kGroupOfA + kGroupOfSmallB);
}

TEST_F(LineReportTest, GroupsByProgramInTheOrderOfTotals) {
  options_.PerProgram = options_.CpuOption = true;
  EXPECT_EQ(Body(kThreePrograms), kGroupOfA + kGroupOfBigB + kGroupOfSmallB);
}

TEST_F(LineReportTest, GroupsByProgramInTheIncreasingOrderOfTotals) {
  options_.PerProgram = options_.CpuOption = true;
  options_.TickOrder = SortOrder::kAscending;
  const std::string group_of_small_b =
      "b                    4      1        3.33  \n"
      "                     1      5        16.66 \n" +
      kRule + "                            6        19.99 \n\n";
  EXPECT_EQ(Body(kThreePrograms), kGroupOfBigB + group_of_small_b + kGroupOfA);
  options_.CpuOption = false;
  EXPECT_EQ(Body(kThreePrograms), kGroupOfBigB + kGroupOfA + group_of_small_b);
}

TEST_F(LineReportTest, TakesNoNoticeOfTotalsWithoutGroups) {
  const std::string plain = Report(kThreePrograms);
  options_.CpuOption = true;
  EXPECT_EQ(Report(kThreePrograms), plain);
  EXPECT_EQ(plain.find("---"), std::string::npos);
}

TEST_F(LineReportTest, AddsUpThePercentagesAsTheyAreShown) {
  options_.PerProgram = true;
  EXPECT_EQ(Body(Records({"ticks|3", "trace|A|1|1", "trace|A|2|1", "trace|A|3|1"})),
            "A                    3      1        33.33 \n"
            "                     2      1        33.33 \n"
            "                     1      1        33.33 \n" +
                kRule + "                            3        99.99 \n\n");
}

TEST_F(LineReportTest, ShowsNoShareWithoutATotal) {
  for (const std::string_view total : {"no", "0", "abc"}) {
    const std::string ticks = total == "no" ? "" : Records({"ticks|" + std::string(total)});
    EXPECT_EQ(Body(ticks + Records({"trace|A|1|9"})),
              "A                    1      9        0     \n")
        << total;
  }
}

TEST_F(LineReportTest, ShowsSourceLinesWhereFilesAreOpen) {
  OpenSource("lib", {{"SUB", {.text = "IF X THEN\t\tY\n     A  =  1\n\n"}}});
  OpenSource("src", {{"SUB", {.text = "never seen\nnor this\nnor this\nfour\n"}},
                     {"PROG", {.text = std::string(50, 'x') + "\n"}}});
  const std::string report = Report(Records(
      {"ticks|100", "trace|SUB|1|9", "trace|SUB|2|8", "trace|SUB|3|7", "trace|SUB|4|6",
       "trace|SUB|5|5", "trace|PROG|1|4", "trace|NONE|1|3", "trace|SUB|01|2", "trace|SUB|x|1"}));
  EXPECT_EQ(report.substr(report.find('\n') + 1),
            std::string(kColumns) +
                "Source\n"
                "SUB                  1      9        9      IF X THEN Y\n"
                "                     2      8        8      A = 1\n"
                "                     3      7        7      \n"
                "                     4      6        6      four\n"
                "                     5      5        5      ??\n"
                "PROG                 1      4        4      " +
                std::string(35, 'x') +
                "\n"
                "NONE                 1      3        3      ??\n"
                "SUB                  01     2        2      IF X THEN Y\n"
                "                     x      1        1      ??\n");
}

TEST_F(LineReportTest, ShowsSourceLinesInGroups) {
  OpenSource("lib", {{"A", {.text = "one\n"}}});
  options_.PerProgram = true;
  EXPECT_EQ(Body(Records({"ticks|1", "trace|A|1|1"})),
            "A                    1      1        100    one\n" + kRule +
                "                            1        100   \n\n");
}

TEST_F(LineReportTest, GivesTheSourceTheRestOfThePage) {
  struct Row {
    std::int64_t page_width;
    std::size_t want_source;
  };
  const std::vector<Row> rows = {{132, 87}, {80, 35}, {60, 15}, {46, 1}, {45, 0}, {44, 0}, {1, 0}};
  OpenSource("lib", {{"A", {.text = std::string(200, 's') + "\n"}}});
  for (const Row& row : rows) {
    options_.ReportWidth = row.page_width - 1;
    EXPECT_EQ(
        Body(Records({"ticks|1", "trace|A|1|1"})),
        "A                    1      1        100    " + std::string(row.want_source, 's') + "\n")
        << row.page_width;
  }
}

TEST_F(LineReportTest, BeginsEveryPageWithItsHeading) {
  platform_.output_is_terminal = true;
  platform_.size.rows = 4;
  const std::string report =
      Report(Records({"ticks|10", "trace|A|1|3", "trace|A|2|2", "trace|A|3|1"}));
  EXPECT_NE(report.find(" Page 1\n"), std::string::npos);
  EXPECT_NE(report.find("2      2        20    \nProfile of program "), std::string::npos);
  EXPECT_TRUE(report.ends_with(" Page 2\n" + std::string(kColumns) +
                               "\n                     3      1        10    \n"));
}

}  // namespace

}  // namespace ptick
