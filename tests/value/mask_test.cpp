#include "value/mask.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace ptick {

namespace {

using namespace std::string_literals;

struct Row {
  Value of;
  std::string_view mask;
  std::string want;
};

void ExpectLaidOut(const std::vector<Row>& rows) {
  for (const auto& row : rows) {
    EXPECT_EQ(Fmt(row.of, row.mask), row.want) << row.of.DecimalText() << " by " << row.mask;
  }
}

TEST(MaskLeft, PadsOrCutsToItsWidth) {
  ExpectLaidOut({
      {"abc", "L#2", "ab"},
      {"ab", "L#4", "ab  "},
      {"abcd", "L#4", "abcd"},
      {"", "L#3", "   "},
      {"abc", "L#0", ""},
      {"abc", "L#-3", ""},
      {"", "L#0", ""},
      {7, "L#3", "7  "},
      {2.5, "L#6", "2.5   "},
      {1.00005, "L#8", "1       "},
      {1234567, "L#6", "123456"},
      {"a\0b"s, "L#4", "a\0b "s},
      {"\xFE\xFF", "L#1", "\xFE"},
      {"x", "L#6", "x     "},
      {"x", "L#7", "x      "},
      {"x", "L#8", "x       "},
      {"x", "L#10", "x" + std::string(9, ' ')},
      {"x", "L#13", "x" + std::string(12, ' ')},
      {"x", "L#20", "x" + std::string(19, ' ')},
      {"x", "L#60", "x" + std::string(59, ' ')},
  });
}

TEST(MaskLeft, IsMadeFromAComputedWidth) {
  EXPECT_EQ(Mask::Left(4).Format("ab"), "ab  ");
  EXPECT_EQ(Mask::Left(1).Format("ab"), "a");
  EXPECT_EQ(Mask::Left(0).Format("ab"), "");
  EXPECT_EQ(Mask::Left(-7).Format("ab"), "");
  EXPECT_EQ(Mask::Left(std::numeric_limits<std::int64_t>::min()).Format("ab"), "");
}

TEST(MaskZeroFilled, FillsWithZerosAndKeepsTheRightEnd) {
  ExpectLaidOut({
      {7, "R%3", "007"},
      {"7", "R%10", "0000000007"},
      {"", "R%3", "000"},
      {"123", "R%3", "123"},
      {"12345", "R%3", "345"},
      {"-7", "R%3", "0-7"},
      {"ab", "R%3", "0ab"},
      {0.5, "R%5", "000.5"},
      {7, "R%0", ""},
      {7, "R%-3", ""},
      {"\0"s, "R%2", "0\0"s},
  });
}

TEST(MaskDecimals, ShowsTwoDecimals) {
  ExpectLaidOut({
      {12.5, "MR20", "12.50"},
      {12.5, "L2", "12.50"},
      {"12.5", "MR20", "12.50"},
      {5000, "MR22", "50.00"},
      {"5000", "MR22", "50.00"},
      {5, "MR22", "0.05"},
      {50, "MR22", "0.50"},
      {0, "MR22", "0.00"},
      {0, "MR20", "0.00"},
      {0.0, "L2", "0.00"},
      {7, "L2", "7.00"},
      {-7, "L2", "-7.00"},
      {-5000, "MR22", "-50.00"},
      {1, "MR22", "0.01"},
      {"0.5", "MR22", "0.01"},
      {"0.49", "MR22", "0.00"},
      {"-0.49", "MR22", "0.00"},
      {"-0.5", "MR22", "-0.01"},
      {"12345.678", "MR22", "123.46"},
      {"+007.1", "L2", "7.10"},
      {"000", "L2", "0.00"},
      {"-0", "L2", "0.00"},
      {"-0.004", "L2", "0.00"},
      {"-0.005", "L2", "-0.01"},
      {-0.001, "MR20", "0.00"},
      {1234567, "L2", "1234567.00"},
  });
}

TEST(MaskDecimals, RoundsHalfAwayFromZeroOnTheDecimalValue) {
  ExpectLaidOut({
      {"1.005", "L2", "1.01"},
      {"-1.005", "L2", "-1.01"},
      {1.005, "L2", "1.01"},
      {2.675, "MR20", "2.68"},
      {-2.675, "MR20", "-2.68"},
      {"1.00499999999999999999999", "L2", "1.00"},
      {"1.00500000000000000000001", "L2", "1.01"},
      {"0.995", "L2", "1.00"},
      {"9.995", "L2", "10.00"},
      {"999.999", "L2", "1000.00"},
      {"99999999999999999999999999999.995", "L2", "100000000000000000000000000000.00"},
      {"123456789012345678901234567890.125", "L2", "123456789012345678901234567890.13"},
      {"123456789012345678901234567890", "MR22", "1234567890123456789012345678.90"},
      {1.0 / 3, "L2", "0.33"},
      {2.0 / 3, "L2", "0.67"},
      {0.1 + 0.2, "L2", "0.30"},
      {1e-300, "L2", "0.00"},
      {1e20, "L2", "100000000000000000000.00"},
      {std::numeric_limits<std::int64_t>::min(), "MR22", "-92233720368547758.08"},
  });
}

TEST(MaskDecimals, TakesOtherCountsAndScales) {
  ExpectLaidOut({
      {"1.5", "L0", "2"},
      {"-0.4", "L0", "0"},
      {"1.23456", "L4", "1.2346"},
      {0.00006, "L4", "0.0001"},
      {1.5, "MR0", "2"},
      {1.25, "MR1", "1.3"},
      {12345, "MR03", "12"},
      {12345, "MR39", "0.000"},
      {999999999, "MR39", "1.000"},
      {499999, "MR39", "0.000"},
      {500000, "MR39", "0.001"},
      {5, "L9", "5.000000000"},
  });
}

TEST(MaskGrouped, SetsCommasBetweenGroupsOfThree) {
  ExpectLaidOut({
      {1234567, "ML,", "1,234,567"},
      {0, "ML,", "0"},
      {1, "ML,", "1"},
      {12, "ML,", "12"},
      {123, "ML,", "123"},
      {1234, "ML,", "1,234"},
      {12345, "ML,", "12,345"},
      {123456, "ML,", "123,456"},
      {-123, "ML,", "-123"},
      {-1234, "ML,", "-1,234"},
      {-1234567, "ML,", "-1,234,567"},
      {"0012", "ML,", "12"},
      {"+1234", "ML,", "1,234"},
      {"-0", "ML,", "0"},
      {"000", "ML,", "0"},
      {"0.4", "ML,", "0"},
      {"-0.4", "ML,", "0"},
      {"-0.5", "ML,", "-1"},
      {"999.5", "ML,", "1,000"},
      {999999.5, "ML,", "1,000,000"},
      {1234.49, "ML,", "1,234"},
      {"123456789012345678901234567890", "ML,", "123,456,789,012,345,678,901,234,567,890"},
      {"999999999999999999999999999999.5", "ML,", "1,000,000,000,000,000,000,000,000,000,000"},
      {std::numeric_limits<std::int64_t>::max(), "ML,", "9,223,372,036,854,775,807"},
      {1e15, "ML,", "1,000,000,000,000,000"},
  });
}

TEST(MaskNumber, LeavesOtherTextUnchanged) {
  for (const std::string_view mask : {"L2", "MR20", "MR22", "ML,"}) {
    for (const std::string& text : {""s, "abc"s, "12a"s, " 12"s, "12 "s, "1e5"s, ".5"s, "5."s, "-"s,
                                    "12\r"s, "1,234"s, "\xFE"s, "1\0"s}) {
      EXPECT_EQ(Fmt(text, mask), text) << mask;
      EXPECT_EQ(Mask::Parse(mask).Format(text), text) << mask;
    }
  }
}

TEST(Mask, OfUnknownFormLeavesEveryTextUnchanged) {
  for (const std::string_view mask : {"",      "L",
                                      "R",     "M",
                                      "#",     "L#",
                                      "R%",    "MR",
                                      "ML",    "L#x",
                                      "L#4x",  "L# 4",
                                      "L#+4",  "R%1.5",
                                      "L22",   "LA",
                                      "MR222", "MRx",
                                      "MR2x",  "ML,2",
                                      "ML;",   "R#4",
                                      "l#4",   "mr20",
                                      "D2",    "L#99999999999999999999",
                                      "L#4 "}) {
    for (const std::string_view text : {"", "abc", "1234.567", "-0"}) {
      EXPECT_EQ(Fmt(text, mask), text) << mask;
    }
    EXPECT_EQ(Mask::Parse(mask).Width(), 0) << mask;
  }
}

TEST(Mask, KnowsItsWidth) {
  struct WidthRow {
    std::string_view mask;
    std::int64_t want;
    bool want_numbers;
  };
  const std::vector<WidthRow> rows = {{"L#20", 20, false}, {"R%3", 3, false}, {"L#-2", -2, false},
                                      {"L2", 0, true},     {"MR22", 0, true}, {"ML,", 0, true}};
  for (const auto& row : rows) {
    EXPECT_EQ(Mask::Parse(row.mask).Width(), row.want) << row.mask;
    EXPECT_EQ(Mask::Parse(row.mask).TakesNumbers(), row.want_numbers) << row.mask;
  }
  EXPECT_EQ(Mask::Left(13).Width(), 13);
}

TEST(Mask, AppendsBehindWhatIsThere) {
  std::string out = "<";
  Mask::Parse("L#3").Append("a", out);
  Mask::Parse("R%3").Append("7", out);
  Mask::Parse("L2").Append("1", out);
  Mask::Parse("ML,").Append("-1000", out);
  Mask().Append(">", out);
  EXPECT_EQ(out, "<a  0071.00-1,000>");
}

}  // namespace

}  // namespace ptick
