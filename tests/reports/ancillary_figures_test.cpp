#include <gtest/gtest.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "reports/ancillary_fixture.h"
#include "value/mask.h"

namespace ptick {

namespace {

TEST_F(AncillaryReportTest, ShowsIndexAndTriggerActivity) {
  struct Row {
    std::string_view count;
    std::string_view ticks;
    std::string_view TotalTicks;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {"1", "0", "100", "1 events , 0 ticks , 0.00% of CPU"},
      {"0", "1", "3", "0 events , 1 ticks , 33.33% of CPU"},
      {"5", "2", "3", "5 events , 2 ticks , 66.67% of CPU"},
      {"0005", "12345", "12345", "0005 events , 12,345 ticks , 100.00% of CPU"},
      {"1234567", "1", "800", "1234567 events , 1 ticks , 0.13% of CPU"},
      {"1", "", "100", "1 events ,  ticks , 0.00% of CPU"},
      {"", "7", "100", " events , 7 ticks , 7.00% of CPU"},
      {"abc", "7", "100", "abc events , 7 ticks , 7.00% of CPU"},
      {"1", "abc", "100", "1 events , abc ticks , 0.00% of CPU"},
      {"1", "50", "0", "1 events , 50 ticks , 0.00% of CPU"},
      {"0.5", "-100", "200", "0.5 events , -100 ticks , -50.00% of CPU"},
      {"1", "9223372036854775807", "9223372036854775807",
       "1 events , 9,223,372,036,854,775,807 ticks , 100.00% of CPU"},
      {"0", "0", "100", "None"},
      {"", "", "100", "None"},
      {"-1", "-1", "100", "None"},
      {"abc", "0.0", "100", "None"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(testing::Message() << row.count << " " << row.ticks << " " << row.TotalTicks);
    tables_ = ProfileTables();
    tables_.TotalTicks = row.TotalTicks;
    const std::string total = "Profile ticks : " + Fmt(tables_.TotalTicks, "ML,") + "\n";
    tables_.IndexCount = row.count;
    tables_.TicksIndex = row.ticks;
    EXPECT_EQ(Report(), total + "Index count   : " + std::string(row.want) + "\n" + kTriggerNone +
                            kEmptyTail);
    std::swap(tables_.IndexCount, tables_.TriggerCount);
    std::swap(tables_.TicksIndex, tables_.TicksTrigger);
    EXPECT_EQ(Report(),
              total + kIndexNone + "Trigger count : " + std::string(row.want) + "\n" + kEmptyTail);
  }
}

TEST_F(AncillaryReportTest, ShowsSharesOfNoTotalAsZero) {
  tables_.TicksIndex = "5";
  tables_.TicksTrigger = "6";
  EXPECT_EQ(Report(),
            "Index count   :  events , 5 ticks , 0.00% of CPU\n"
            "Trigger count :  events , 6 ticks , 0.00% of CPU\n" +
                kEmptyTail);
}

TEST_F(AncillaryReportTest, ShowsUserTicksThatWereCounted) {
  struct Row {
    std::size_t number;
    Value ticks;
    std::string_view TotalTicks;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {3, 25, "100", "User Tick 3   : 25      ( 25.00 % )\n"},
      {1, 1, "3", "User Tick 1   : 1       ( 33.33 % )\n"},
      {2, 2, "3", "User Tick 2   : 2       ( 66.67 % )\n"},
      {10, 5, "100", "User Tick 10  : 5       ( 5.00 % )\n"},
      {9, 123456789, "100", "User Tick 9   : 12345678( 123456789.00 % )\n"},
      {4, "007", "7", "User Tick 4   : 007     ( 100.00 % )\n"},
      {5, -5, "10", "User Tick 5   : -5      ( -50.00 % )\n"},
      {6, 2.5, "10", "User Tick 6   : 2.5     ( 25.00 % )\n"},
      {7, "abc", "10", "User Tick 7   : abc     ( 0.00 % )\n"},
      {8, 25, "0", "User Tick 8   : 25      \n"},
      {8, 25, "", "User Tick 8   : 25      \n"},
      {8, 25, "abc", "User Tick 8   : 25      ( 0.00 % )\n"},
      {8, 0, "100", ""},
      {8, "", "100", ""},
      {8, "0.0", "100", ""},
  };
  for (const Row& row : rows) {
    tables_ = ProfileTables();
    tables_.UserTicks[row.number - 1] = row.ticks;
    tables_.TotalTicks = row.TotalTicks;
    std::string total;
    if (!row.TotalTicks.empty()) {
      total = "Profile ticks : " + std::string(row.TotalTicks) + "\n";
    }
    EXPECT_EQ(Report(), total + kIndexNone + kTriggerNone + std::string(row.want) + kEmptyTail)
        << row.ticks.Text() << " of " << row.TotalTicks;
  }
}

TEST_F(AncillaryReportTest, ShowsMemoryUnderItsConditions) {
  struct Row {
    Value PageSize;
    std::string_view MemUsed;
    std::string_view MemFree;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {"4096", "", "", "Page size     : 4,096\n"},
      {"abc", "", "", "Page size     : abc\n"},
      {0, "", "", ""},
      {"", "", "", ""},
      {"00", "", "", ""},
      {0, "1", "2", "Memory        : Used 1 , Free 2\n"},
      {0, "0", "0", "Memory        : Used 0 , Free 0\n"},
      {0, "-1234567", "1234.5", "Memory        : Used -1,234,567 , Free 1,235\n"},
      {0, "abc", "x", "Memory        : Used abc , Free x\n"},
      {0, "1", "", ""},
      {0, "", "1", ""},
      {"8", "1000", "10000", "Page size     : 8\nMemory        : Used 1,000 , Free 10,000\n"},
  };
  for (const Row& row : rows) {
    tables_.PageSize = row.PageSize;
    tables_.MemUsed = row.MemUsed;
    tables_.MemFree = row.MemFree;
    EXPECT_EQ(Report(), kIndexNone + kTriggerNone + std::string(row.want) + kEmptyTail)
        << row.PageSize.Text() << " " << row.MemUsed << " " << row.MemFree;
  }
}

TEST_F(AncillaryReportTest, ShowsKeyboardSpeed) {
  struct Row {
    std::optional<TypingRate> rate;
    std::string_view Hertz;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {TypingRate{"20", "500"}, "100", "20 characters in 5 secs , 0.25 secs per keystroke"},
      {TypingRate{"3", "100"}, "100", "3 characters in 1 secs , 0.3333 secs per keystroke"},
      {TypingRate{"3", "20"}, "10", "3 characters in 2 secs , 0.6666 secs per keystroke"},
      {TypingRate{"007", "1"}, "3", "007 characters in 0.3333 secs , 0.0476 secs per keystroke"},
      {TypingRate{"4", ""}, "100", "4 characters in 0 secs , 0 secs per keystroke"},
      {TypingRate{"4", "abc"}, "100", "4 characters in 0 secs , 0 secs per keystroke"},
      {TypingRate{"4", "100"}, "0", "4 characters in 0 secs , 0 secs per keystroke"},
      {TypingRate{"0.5", "100"}, "100", "0.5 characters in 1 secs , 2 secs per keystroke"},
      {TypingRate{"0", "500"}, "100", ""},
      {TypingRate{"-1", "500"}, "100", ""},
      {TypingRate{"", "500"}, "100", ""},
      {TypingRate{"abc", "500"}, "100", ""},
      {TypingRate{"20", "500"}, "", ""},
      {std::nullopt, "100", ""},
  };
  const std::string input = "INPUT count   : 0\n";
  for (const Row& row : rows) {
    tables_.TypeRate = row.rate;
    tables_.Hertz = row.Hertz;
    const std::string speed =
        row.want.empty() ? "" : "Keyboard speed: " + std::string(row.want) + "\n";
    EXPECT_EQ(Report(), kIndexNone + kTriggerNone + input + speed + kEmptyTail.substr(input.size()))
        << row.want;
  }
}

}  // namespace

}  // namespace ptick
