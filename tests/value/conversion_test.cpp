#include "value/conversion.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ptick {

namespace {

constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();

constexpr std::int64_t kFirstSecond = -62135596800;  // 0001-01-01 00:00:00
constexpr std::int64_t kLastSecond = 253402300799;   // 9999-12-31 23:59:59
constexpr std::int64_t kFirstDate = -718430;
constexpr std::int64_t kLastDate = 2933628;

ZoneOffset Fixed(std::int64_t offset) {
  return [offset](std::int64_t /*time*/) { return std::optional(offset); };
}

struct Row {
  Value of;
  std::string_view code;
  std::string want;
};

void ExpectConverted(const std::vector<Row>& rows, const ZoneOffset& zone = {}) {
  for (const auto& row : rows) {
    EXPECT_EQ(OConv(row.of, row.code, zone).Text(), row.want) << row.of.Text() << " " << row.code;
  }
}

TEST(Conversion, ChangesTheCaseOfAsciiLetters) {
  ExpectConverted({
      {"abcXYZ 1_", "MCU", "ABCXYZ 1_"},
      {"abcXYZ 1_", "MCL", "abcxyz 1_"},
      {"", "MCU", ""},
      {"", "MCL", ""},
      {12, "MCU", "12"},
      {2.5, "MCL", "2.5"},
      {"\xE4\xC4\xFE", "MCU", "\xE4\xC4\xFE"},
      {"\xE4\xC4\xFE", "MCL", "\xE4\xC4\xFE"},
  });
}

TEST(Conversion, SplitsAStampIntoDateAndTime) {
  struct StampRow {
    Value stamp;
    std::int64_t date;
    std::int64_t time;
  };
  const std::vector<StampRow> rows = {
      {0, 732, 0},
      {"0", 732, 0},
      {"-0", 732, 0},
      {1, 732, 1},
      {86399, 732, 86399},
      {86400, 733, 0},
      {-1, 731, 86399},
      {-86400, 731, 0},
      {-86401, 730, 86399},
      {-63244800, 0, 0},
      {1704112496, 20455, 45296},
      {"1704112496", 20455, 45296},
      {"+01704112496.0", 20455, 45296},
      {1704112496.75, 20455, 45296},
      {"1704112496.999", 20455, 45296},
      {-0.5, 731, 86399},
      {"-0.001", 731, 86399},
      {2147483648, 25587, 11648},
      {kFirstSecond, kFirstDate, 0},
      {kLastSecond, kLastDate, 86399},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(OConv(row.stamp, "U0ff1").AsNumber(), Number(row.date)) << row.stamp.Text();
    EXPECT_EQ(OConv(row.stamp, "U0ff0").AsNumber(), Number(row.time)) << row.stamp.Text();
  }
}

TEST(Conversion, ShowsStampsInLocalTime) {
  struct ZoneRow {
    std::int64_t stamp;
    std::int64_t offset;
    std::int64_t date;
    std::int64_t time;
  };
  const std::vector<ZoneRow> rows = {
      {0, 3600, 732, 3600},
      {0, -3600, 731, 82800},
      {86399, 1, 733, 0},
      {0, 45900, 732, 45900},
      {kLastSecond + 1, -1, kLastDate, 86399},
      {kFirstSecond - 1, 1, kFirstDate, 0},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(OConv(row.stamp, "U0ff1", Fixed(row.offset)).AsNumber(), Number(row.date))
        << row.stamp;
    EXPECT_EQ(OConv(row.stamp, "U0ff0", Fixed(row.offset)).AsNumber(), Number(row.time))
        << row.stamp;
  }
}

TEST(Conversion, AsksForTheOffsetOfTheVeryMoment) {
  const ZoneOffset summer_from_1000 = [](std::int64_t time) {
    return std::optional<std::int64_t>(time >= 1000 ? 7200 : 3600);
  };
  EXPECT_EQ(OConv(999, "U0ff0", summer_from_1000).Text(), "4599");
  EXPECT_EQ(OConv(1000, "U0ff0", summer_from_1000).Text(), "8200");
  EXPECT_EQ(OConv("999.9", "U0ff0", summer_from_1000).Text(), "4599");
}

TEST(Conversion, LeavesStampsThatNoCalendarShows) {
  const std::vector<Value> stamps = {"",
                                     "abc",
                                     " 0",
                                     "0 ",
                                     "1e5",
                                     "0\r",
                                     kFirstSecond - 3601,
                                     kLastSecond + 3601,
                                     kMax,
                                     kMin,
                                     "9223372036854775808",
                                     "-9223372036854775809",
                                     "99999999999999999999999999999999",
                                     1e300,
                                     -1e300};
  for (const auto& stamp : stamps) {
    for (const std::int64_t offset : {0, 3600, -3600}) {
      const std::vector<std::string> results = {
          OConv(stamp, "U0ff1", Fixed(offset)).Text(), OConv(stamp, "U0ff0", Fixed(offset)).Text(),
          OConv(OConv(stamp, "U0ff1", Fixed(offset)), "D").Text(),
          OConv(OConv(stamp, "U0ff0", Fixed(offset)), "MTS").Text()};
      EXPECT_EQ(results, std::vector<std::string>(4, stamp.Text())) << offset;
    }
  }
}

TEST(Conversion, LeavesStampsThatTheZoneDoesNotShow) {
  const ZoneOffset unknown = [](std::int64_t /*time*/) { return std::optional<std::int64_t>(); };
  EXPECT_EQ(OConv("007", "U0ff1", unknown).Text(), "007");
  EXPECT_EQ(OConv("007", "U0ff0", unknown).Text(), "007");
  EXPECT_EQ(OConv(kLastSecond, "U0ff1", Fixed(1)).Text(), std::to_string(kLastSecond));
  EXPECT_EQ(OConv(kFirstSecond, "U0ff0", Fixed(-1)).Text(), std::to_string(kFirstSecond));
}

TEST(Conversion, ShowsDates) {
  ExpectConverted({
      {732, "D", "01 JAN 1970"},
      {"732", "D", "01 JAN 1970"},
      {732.75, "D", "01 JAN 1970"},
      {731, "D", "31 DEC 1969"},
      {0, "D", "31 DEC 1967"},
      {1, "D", "01 JAN 1968"},
      {-1, "D", "30 DEC 1967"},
      {-0.5, "D", "30 DEC 1967"},
      {60, "D", "29 FEB 1968"},
      {763, "D", "01 FEB 1970"},
      {791, "D", "01 MAR 1970"},
      {822, "D", "01 APR 1970"},
      {852, "D", "01 MAY 1970"},
      {883, "D", "01 JUN 1970"},
      {913, "D", "01 JUL 1970"},
      {944, "D", "01 AUG 1970"},
      {975, "D", "01 SEP 1970"},
      {1005, "D", "01 OCT 1970"},
      {1036, "D", "01 NOV 1970"},
      {1066, "D", "01 DEC 1970"},
      {11748, "D", "29 FEB 2000"},
      {-24776, "D", "01 MAR 1900"},
      {-24777, "D", "28 FEB 1900"},
      {20455, "D", "01 JAN 2024"},
      {kFirstDate, "D", "01 JAN 0001"},
      {kLastDate, "D", "31 DEC 9999"},
      {kFirstDate - 1, "D", "-718431"},
      {kLastDate + 1, "D", "2933629"},
      {kMax, "D", "9223372036854775807"},
      {kMin, "D", "-9223372036854775808"},
      {"", "D", ""},
      {"abc", "D", "abc"},
      {"732 ", "D", "732 "},
  });
}

TEST(Conversion, ShowsTimes) {
  ExpectConverted({
      {0, "MTS", "00:00:00"},
      {"0", "MTS", "00:00:00"},
      {1, "MTS", "00:00:01"},
      {59, "MTS", "00:00:59"},
      {60, "MTS", "00:01:00"},
      {3599, "MTS", "00:59:59"},
      {3600, "MTS", "01:00:00"},
      {45296, "MTS", "12:34:56"},
      {86399, "MTS", "23:59:59"},
      {86399.9, "MTS", "23:59:59"},
      {86400, "MTS", "86400"},
      {-1, "MTS", "-1"},
      {-0.5, "MTS", "-0.5"},
      {kMax, "MTS", "9223372036854775807"},
      {"99999999999999999999", "MTS", "99999999999999999999"},
      {"", "MTS", ""},
      {"12:00", "MTS", "12:00"},
  });
}

TEST(Conversion, OfUnknownCodeLeavesTheValue) {
  for (const std::string_view code :
       {"", "mcu", "MC", "MCUX", "U0ff2", "U0ff", "u0ff1", "D2", "D ", "MT", "MTSH", "MD2"}) {
    ExpectConverted({{"abc", code, "abc"}, {732, code, "732"}, {"007", code, "007"}}, Fixed(60));
  }
}

TEST(TimeDate, IsTheTimeOfDayAndTheDate) {
  struct TimeRow {
    std::int64_t time;
    std::int64_t offset;
    std::string_view want;
  };
  const std::vector<TimeRow> rows = {
      {1704112496, 0, "12:34:56 01 JAN 2024"}, {1704112496, -45297, "23:59:59 31 DEC 2023"},
      {0, 0, "00:00:00 01 JAN 1970"},          {kLastSecond, 0, "23:59:59 31 DEC 9999"},
      {kLastSecond, 1, "253402300799"},        {kMax, 1, "9223372036854775807"},
      {kMin, -1, "-9223372036854775808"},      {kMin, 0, "-9223372036854775808"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(TimeDate(row.time, Fixed(row.offset)), row.want) << row.time;
  }
  EXPECT_EQ(TimeDate(0, {}), "00:00:00 01 JAN 1970");
  EXPECT_EQ(TimeDate(7, [](std::int64_t /*time*/) { return std::optional<std::int64_t>(); }), "7");
}

int DaysOf(int year, std::size_t month) {
  constexpr std::array<int, 12> kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  const bool leap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
  return kDays.at(month) + (leap && month == 1 ? 1 : 0);
}

TEST(Conversion, EveryDayFollowsTheOneBefore) {
  constexpr std::string_view kNames = "JANFEBMARAPRMAYJUNJULAUGSEPOCTNOVDEC";
  std::int64_t date = 1;  // 01 JAN 1968
  for (int year = 1968; year <= 2104; ++year) {
    for (std::size_t month = 0; month < 12; ++month) {
      for (int day = 1; day <= DaysOf(year, month); ++day, ++date) {
        const std::string want = (day < 10 ? "0" : "") + std::to_string(day) + " " +
                                 std::string(kNames.substr(month * 3, 3)) + " " +
                                 std::to_string(year);
        ASSERT_EQ(OConv(date, "D").Text(), want);
      }
    }
  }
}

}  // namespace

}  // namespace ptick
