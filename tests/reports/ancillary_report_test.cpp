#include "reports/ancillary_report.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "reports/ancillary_fixture.h"

namespace ptick {

namespace {

TEST_F(AncillaryReportTest, PrintsWhatIsAlwaysThere) {
  EXPECT_EQ(Report(), kIndexNone + kTriggerNone + kEmptyTail);
}

TEST_F(AncillaryReportTest, PrintsAllInOrder) {
  tables_.ProgramCommand = "PROG -J X";
  tables_.PortNo = "12";
  tables_.Pid = "4711";
  tables_.PPid = "1";
  tables_.StartTime = "0";
  tables_.EndTime = "1704110400";
  tables_.UsrCpu = "1234";
  tables_.SysCpu = "50";
  tables_.Hertz = "100";
  tables_.TotalTicks = "1284";
  tables_.IndexCount = "17";
  tables_.TicksIndex = "1000";
  tables_.TriggerCount = "3";
  tables_.TicksTrigger = "321";
  tables_.UserTicks[0] = "1284";
  tables_.UserTicks[9] = 1;
  tables_.PageSize = "4096";
  tables_.MemUsed = "1234567";
  tables_.MemFree = "999";
  tables_.InputCount = 2;
  tables_.TypeRate = TypingRate{"20", "500"};
  tables_.Resource = "1000\t2\t3\t4\t5\t6\t7\t8\t9\t10\t11\t12";
  tables_.ReadCount = "10";
  tables_.WriteCount = "20";
  tables_.DeleteCount = "30";
  tables_.ClearFileCount = "40";
  tables_.OpenCount = "50";
  tables_.Performs = Performs({MakePerform("A"), MakePerform("B"), MakePerform("A")});
  EXPECT_EQ(Report(),
            "Command line  : PROG -J X\n"
            "Port number   : 12\n"
            "Process ID    : 4711\n"
            "Parent pid    : 1\n"
            "Start time    : 01 JAN 1970 00:00:00\n"
            "End time      : 01 JAN 2024 12:00:00\n"
            "CPU usage     : User 12.34 , System 0.50\n"
            "Profile ticks : 1,284\n"
            "Index count   : 17 events , 1,000 ticks , 77.88% of CPU\n"
            "Trigger count : 3 events , 321 ticks , 25.00% of CPU\n"
            "User Tick 1   : 1284    ( 100.00 % )\n"
            "User Tick 10  : 1       ( 0.08 % )\n"
            "Page size     : 4,096\n"
            "Memory        : Used 1,234,567 , Free 999\n"
            "INPUT count   : 2\n"
            "Keyboard speed: 20 characters in 5 secs , 0.25 secs per keystroke\n"
            "Resource info : Maximum resident set size          : 1000  (4,096,000 bytes)\n"
            "                Integral resident set size         : 2  (8,192 bytes)\n"
            "                Page faults with no I/O            : 3\n"
            "                Page faults requiring physical I/O : 4\n"
            "                Swaps                              : 5\n"
            "                Block input operations             : 6\n"
            "                Block output operations            : 7\n"
            "                Messages sent                      : 8\n"
            "                Messages received                  : 9\n"
            "                Signals received                   : 10\n"
            "                Voluntary context switches         : 11\n"
            "                Involuntary context switches       : 12\n"
            "File I/O      : READ      statement count          : 10\n"
            "                WRITE     statement count          : 20\n"
            "                DELETE    statement count          : 30\n"
            "                CLEARFILE statement count          : 40\n"
            "                OPEN      statement count          : 50\n"
            "                PERFORM   statement count          : 3\n");
}

// A report with nothing but some lines at its beginning.
TEST_F(AncillaryReportTest, PrintsProcessLinesUnderTheirConditions) {
  struct Row {
    Value ProfileTables::*entry;
    Value recorded;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {&ProfileTables::PortNo, "0", "Port number   : 0\n"},
      {&ProfileTables::PortNo, "-1", ""},
      {&ProfileTables::PortNo, "-0.5", ""},
      {&ProfileTables::PortNo, "007", "Port number   : 007\n"},
      {&ProfileTables::PortNo, "", "Port number   : \n"},
      {&ProfileTables::PortNo, "abc", "Port number   : abc\n"},
      {&ProfileTables::PortNo, "1234567", "Port number   : 1234567\n"},
      {&ProfileTables::PortNo, "99999999999999999999", "Port number   : 99999999999999999999\n"},
      {&ProfileTables::Pid, "0", "Process ID    : 0\n"},
      {&ProfileTables::Pid, "-2", ""},
      {&ProfileTables::Pid, "", "Process ID    : \n"},
      {&ProfileTables::PPid, "0", "Parent pid    : 0\n"},
      {&ProfileTables::PPid, "-2", ""},
      {&ProfileTables::PPid, "", "Parent pid    : \n"},
      {&ProfileTables::TotalTicks, "0", "Profile ticks : 0\n"},
      {&ProfileTables::TotalTicks, "1234567", "Profile ticks : 1,234,567\n"},
      {&ProfileTables::TotalTicks, "999.5", "Profile ticks : 1,000\n"},
      {&ProfileTables::TotalTicks, "abc", "Profile ticks : abc\n"},
      {&ProfileTables::TotalTicks, "", ""},
  };
  for (const Row& row : rows) {
    tables_ = ProfileTables();
    tables_.*row.entry = row.recorded;
    EXPECT_EQ(Report(), std::string(row.want) + kIndexNone + kTriggerNone + kEmptyTail)
        << row.recorded.Text();
  }
}

TEST_F(AncillaryReportTest, PrintsTheCommandLineAsItIs) {
  tables_.ProgramCommand = " PROG  \xff 'x' ";
  EXPECT_EQ(Report(),
            "Command line  :  PROG  \xff 'x' \n" + kIndexNone + kTriggerNone + kEmptyTail);
}

TEST_F(AncillaryReportTest, ShowsTimesInTheLocalZone) {
  struct Row {
    std::string_view stamp;
    std::int64_t zone_offset;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {"0", 0, "01 JAN 1970 00:00:00"},
      {"0", 3600, "01 JAN 1970 01:00:00"},
      {"0", -1, "31 DEC 1969 23:59:59"},
      {"1709164799", 0, "28 FEB 2024 23:59:59"},
      {"1709164799", 1, "29 FEB 2024 00:00:00"},
      {"-1", 0, "31 DEC 1969 23:59:59"},
      {"abc", 0, "abc abc"},
      {"99999999999999999999", 0, "99999999999999999999 99999999999999999999"},
      {"253402300800", 0, "253402300800 253402300800"},  // the year 10000
      {"253402300799", 0, "31 DEC 9999 23:59:59"},
      {"1e5", 0, "1e5 1e5"},
      {" ", 0, "   "},
  };
  for (const Row& row : rows) {
    tables_ = ProfileTables();
    platform_.zone = [&row](std::int64_t) { return row.zone_offset; };
    tables_.StartTime = row.stamp;
    EXPECT_EQ(Report(), "Start time    : " + std::string(row.want) + "\n" + kIndexNone +
                            kTriggerNone + kEmptyTail)
        << row.stamp;
    tables_ = ProfileTables();
    tables_.EndTime = row.stamp;
    EXPECT_EQ(Report(), "End time      : " + std::string(row.want) + "\n" + kIndexNone +
                            kTriggerNone + kEmptyTail)
        << row.stamp;
  }
}

TEST_F(AncillaryReportTest, ShowsCpuUsageOnlyWithAClockRate) {
  struct Row {
    std::string_view UsrCpu;
    std::string_view SysCpu;
    std::string_view Hertz;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {"100", "1", "100", "CPU usage     : User 1.00 , System 0.01\n"},
      {"2", "1", "3", "CPU usage     : User 0.67 , System 0.33\n"},
      {"0", "0", "100", "CPU usage     : User 0.00 , System 0.00\n"},
      {"5", "1234567", "1000", "CPU usage     : User 0.01 , System 1234.57\n"},
      {"100", "1", "0", "CPU usage     : User 0.00 , System 0.00\n"},
      {"abc", "-150", "100", "CPU usage     : User 0.00 , System -1.50\n"},
      {"", "1", "100", ""},
      {"1", "", "100", ""},
      {"1", "1", "", ""},
  };
  for (const Row& row : rows) {
    tables_.UsrCpu = row.UsrCpu;
    tables_.SysCpu = row.SysCpu;
    tables_.Hertz = row.Hertz;
    EXPECT_EQ(Report(), std::string(row.want) + kIndexNone + kTriggerNone + kEmptyTail)
        << row.UsrCpu << " " << row.SysCpu << " " << row.Hertz;
  }
}

TEST_F(AncillaryReportTest, PrintsCountsAsTheyStand) {
  tables_.InputCount = "0012345";
  tables_.ReadCount = "";
  tables_.WriteCount = "abc";
  tables_.DeleteCount = "-1";
  tables_.ClearFileCount = "1.50";
  tables_.OpenCount = "99999999999999999999";
  EXPECT_EQ(Report(), kIndexNone + kTriggerNone +
                          "INPUT count   : 0012345\n"
                          "File I/O      : READ      statement count          : \n"
                          "                WRITE     statement count          : abc\n"
                          "                DELETE    statement count          : -1\n"
                          "                CLEARFILE statement count          : 1.50\n"
                          "                OPEN      statement count          : "
                          "99999999999999999999\n"
                          "                PERFORM   statement count          : 0\n");
}

TEST_F(AncillaryReportTest, SetsNoHeading) {
  platform_.output_is_terminal = true;
  platform_.size.rows = 5;
  EXPECT_EQ(Report(), kIndexNone + kTriggerNone + kEmptyTail);
}

}  // namespace

}  // namespace ptick
