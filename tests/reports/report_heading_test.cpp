#include "reports/report_heading.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "support/report_run.h"

namespace ptick {

namespace {

using ReportHeadingTest = ReportTest;

TEST(ReportHeading, FillsTheTitleUpToThePageNumber) {
  struct Row {
    std::size_t title_length;
    std::int64_t width;
    std::size_t blanks;
  };
  const std::vector<Row> rows = {
      {10, 79, 54}, {0, 79, 64},  {63, 79, 1},       {64, 79, 0}, {65, 79, 0},
      {200, 79, 0}, {10, 29, 4},  {10, 199, 174},    {10, 0, 0},  {0, 15, 0},
      {0, 16, 1},   {10, -50, 0}, {1, 32766, 32750}, {14, 29, 0}, {13, 29, 1},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(testing::Message() << row.title_length << " in " << row.width);
    const PageHeading heading =
        ReportHeading(std::string(row.title_length, 't'), "columns", row.width);
    EXPECT_EQ(heading.title, std::string(row.title_length, 't') + std::string(row.blanks, ' '));
    EXPECT_EQ(heading.columns, "columns");
  }
}

TEST(ReportHeading, CountsBytesAndKeepsThemAll) {
  EXPECT_EQ(ReportHeading("'PL'\xfe\xff\n", "'L'", 25).title, "'PL'\xfe\xff\n   ");
}

TEST(ReportTitle, NamesProgramAndProfile) {
  ProfileTables tables;
  tables.ProfileName = "run1 ...";
  EXPECT_EQ(ReportTitle("Profile of program ", tables),
            "Profile of program (unknown) from profile run1 ...");
  tables.ProgramName = "";
  tables.ProfileName = "";
  EXPECT_EQ(ReportTitle("", tables), " from profile ");
}

TEST_F(ReportHeadingTest, BeginsAReportByItselfWithAPageHeading) {
  options_.ReportWidth = 30;
  const Printed printed = Run([](const ReportJob& job) {
    BeginReport("A title", {.heading = "heading", .title = "title", .rule = "rule"}, job);
  });
  EXPECT_EQ(printed.lines, "A title         Page 1\nheading\n");
}

TEST_F(ReportHeadingTest, BeginsAReportAmongAllWithTitlesAndRule) {
  options_.AllReports = true;
  const Printed printed = Run([](const ReportJob& job) {
    BeginReport("A title", {.heading = "heading", .title = "title", .rule = "rule"}, job);
  });
  EXPECT_EQ(printed.lines, "\ntitle\nrule\n");
}

}  // namespace

}  // namespace ptick
