#include "reports/ancillary_blocks.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "support/report_run.h"

namespace ptick {

namespace {

class AncillaryBlocksTest : public ReportTest {
 protected:
  std::string Resources() {
    return Run([&](const ReportJob& job) { PrintResources(tables_, job.output); }).lines;
  }

  // The figures after the labels of the first n lines.
  std::vector<std::string> Figures(std::size_t n) {
    std::vector<std::string> figures;
    std::string lines = Resources();
    for (; n > 0; --n) {
      const std::size_t end = lines.find('\n');
      figures.push_back(lines.substr(16 + 37, end - 16 - 37));
      lines.erase(0, end + 1);
    }
    return figures;
  }
};

TEST_F(AncillaryBlocksTest, LeavesOutResourcesThatWereNotRecorded) {
  tables_.PageSize = "4096";
  EXPECT_EQ(Resources(), "");
}

TEST_F(AncillaryBlocksTest, PrintsTwelveLinesWhateverWasRecorded) {
  const std::string want =
      "Resource info : Maximum resident set size          : 5\n"
      "                Integral resident set size         : \n"
      "                Page faults with no I/O            : \n"
      "                Page faults requiring physical I/O : \n"
      "                Swaps                              : \n"
      "                Block input operations             : \n"
      "                Block output operations            : \n"
      "                Messages sent                      : \n"
      "                Messages received                  : \n"
      "                Signals received                   : \n"
      "                Voluntary context switches         : \n"
      "                Involuntary context switches       : \n";
  tables_.Resource = "5";
  EXPECT_EQ(Resources(), want);
}

TEST_F(AncillaryBlocksTest, PrintsFiguresAsTheyAre) {
  tables_.Resource = "a b\t1234567\t\t-1\t 5 \t\xff\t007\t8\t9\t10\t11\t12\t13\t14";
  EXPECT_EQ(Figures(12), (std::vector<std::string>{"a b", "1234567", "", "-1", " 5 ", "\xff", "007",
                                                   "8", "9", "10", "11", "12"}));
}

TEST_F(AncillaryBlocksTest, ShowsResidentSetSizesInBytes) {
  struct Row {
    std::string_view pages;
    Value PageSize;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {"1000", "4096", "1000  (4,096,000 bytes)"},
      {"1", 4096, "1  (4,096 bytes)"},
      {"0", "4096", "0  (0 bytes)"},
      {"", "4096", "  (0 bytes)"},
      {"abc", "4096", "abc  (0 bytes)"},
      {"-2", "4096", "-2  (-8,192 bytes)"},
      {"1.5", "3", "1.5  (5 bytes)"},
      {"10", "abc", "10  (0 bytes)"},
      {"2000000000000", "4096", "2000000000000  (8,192,000,000,000,000 bytes)"},
      {"1000", "0", "1000"},
      {"1000", "", "1000"},
      {"1000", 0, "1000"},
  };
  for (const Row& row : rows) {
    const std::string pages(row.pages);
    tables_.Resource = pages + "\t" + pages + "\t1000";
    tables_.PageSize = row.PageSize;
    EXPECT_EQ(Figures(4),
              (std::vector<std::string>{std::string(row.want), std::string(row.want), "1000", ""}))
        << row.pages << " pages of " << row.PageSize.Text();
  }
}

TEST_F(AncillaryBlocksTest, CountsPerformsWithACommand) {
  tables_.Performs = Performs({MakePerform("A"), MakePerform("A")});
  const std::string lines =
      Run([&](const ReportJob& job) { PrintFileStatements(tables_, job.output); }).lines;
  EXPECT_EQ(lines,
            "File I/O      : READ      statement count          : 0\n"
            "                WRITE     statement count          : 0\n"
            "                DELETE    statement count          : 0\n"
            "                CLEARFILE statement count          : 0\n"
            "                OPEN      statement count          : 0\n"
            "                PERFORM   statement count          : 2\n");
}

}  // namespace

}  // namespace ptick
