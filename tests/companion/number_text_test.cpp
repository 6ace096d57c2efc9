#include "companion/number_text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace ptick::companion {

namespace {

constexpr std::uint64_t kMax = std::numeric_limits<std::uint64_t>::max();

struct Row {
  std::uint64_t number;
  std::string_view want;
};

TEST(NumberText, GroupsThousands) {
  const std::vector<Row> rows = {
      {0, "0"},
      {7, "7"},
      {999, "999"},
      {1000, "1,000"},
      {1204, "1,204"},
      {999'999, "999,999"},
      {1'000'000, "1,000,000"},
      {kMax, "18,446,744,073,709,551,615"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(GroupedCount(row.number), row.want);
  }
}

TEST(NumberText, ShowsBytesInThreeDigits) {
  const std::vector<Row> rows = {
      {0, "0 bytes"},
      {999, "999 bytes"},
      {1000, "1.00 kB"},
      {1009, "1.00 kB"},
      {1010, "1.01 kB"},
      {9999, "9.99 kB"},
      {10'000, "10.0 kB"},
      {99'999, "99.9 kB"},
      {100'000, "100 kB"},
      {999'999, "999 kB"},
      {1'000'000, "1.00 MB"},
      {34'567'890, "34.5 MB"},
      {1'999'999'999, "1.99 GB"},
      {1'000'000'000'000, "1.00 TB"},
      {1'000'000'000'000'000, "1.00 PB"},
      {kMax, "18.4 EB"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(ByteCount(row.number), row.want);
  }
}

TEST(NumberText, ShowsTimesInTwoUnits) {
  const std::vector<Row> rows = {
      {0, "0 s"},
      {59, "59 s"},
      {60, "1 min 0 s"},
      {200, "3 min 20 s"},
      {3599, "59 min 59 s"},
      {3600, "1 h 0 min"},
      {7500, "2 h 5 min"},
      {360'000, "100 h 0 min"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Duration(row.number), row.want);
  }
}

template <typename T>
std::string Appended(T number) {
  std::string text = "n=";
  return AppendNumber(text, number) ? text : text + "none";
}

TEST(NumberText, IsTheShortestThatReadsBack) {
  EXPECT_EQ(Appended(0), "n=0");
  EXPECT_EQ(Appended(-12), "n=-12");
  EXPECT_EQ(Appended(kMax), "n=18446744073709551615");
  EXPECT_EQ(Appended(std::numeric_limits<std::int64_t>::min()), "n=-9223372036854775808");
  EXPECT_EQ(Appended(2000.5), "n=2000.5");
  EXPECT_EQ(Appended(0.1), "n=0.1");
  EXPECT_EQ(Appended(0.1 + 0.2), "n=0.30000000000000004");
  EXPECT_EQ(Appended(-134.0), "n=-134");
  EXPECT_EQ(Appended(1e300), "n=1e+300");
  EXPECT_EQ(Appended(-0.0), "n=0");
  EXPECT_EQ(Appended(std::numeric_limits<double>::infinity()), "n=none");
  EXPECT_EQ(Appended(std::numeric_limits<double>::quiet_NaN()), "n=none");
  EXPECT_EQ(Appended(-std::numeric_limits<double>::denorm_min()), "n=-5e-324");
  EXPECT_EQ(Appended(std::numeric_limits<double>::max()), "n=1.7976931348623157e+308");
}

}  // namespace

}  // namespace ptick::companion
