#include "value/number_text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "value/arithmetic.h"
#include "value/value.h"

namespace ptick {

namespace {

constexpr std::int64_t kMaxWhole = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kMinWhole = std::numeric_limits<std::int64_t>::min();
constexpr double kMaxFloating = std::numeric_limits<double>::max();

/// Texts that look like numbers and are none.
const std::vector<std::string> kNotNumeric = {"",
                                              "+",
                                              "-",
                                              ".",
                                              ".5",
                                              "5.",
                                              "-.5",
                                              "-5.",
                                              "1e5",
                                              "1E5",
                                              " 5",
                                              "5 ",
                                              "5\r",
                                              "5\n",
                                              "\t5",
                                              "--5",
                                              "+-5",
                                              "5-",
                                              "1,000",
                                              "1.2.3",
                                              "1..2",
                                              "0x10",
                                              "inf",
                                              "nan",
                                              "abc",
                                              "12a",
                                              "a12",
                                              "5.a",
                                              "5.1a",
                                              "\xFE",
                                              "5\xFE",
                                              "\xB2",
                                              std::string("5\0", 2),
                                              std::string("\0", 1)};

TEST(NumberText, NumericTextIsReadAsANumber) {
  struct Row {
    std::string text;
    Number want;
  };
  const std::vector<Row> rows = {
      {"0", std::int64_t{0}},
      {"5", std::int64_t{5}},
      {"+5", std::int64_t{5}},
      {"-5", std::int64_t{-5}},
      {"007", std::int64_t{7}},
      {"-007", std::int64_t{-7}},
      {"5.0", std::int64_t{5}},
      {"+5.000000000000", std::int64_t{5}},
      {"-5.0", std::int64_t{-5}},
      {"-0", std::int64_t{0}},
      {"-0.00", std::int64_t{0}},
      {"+0.0", std::int64_t{0}},
      {std::string(400, '0'), std::int64_t{0}},
      {std::string(400, '0') + "9", std::int64_t{9}},
      {"5." + std::string(400, '0'), std::int64_t{5}},
      {"9223372036854775807", kMaxWhole},
      {"+9223372036854775807.0", kMaxWhole},
      {"-9223372036854775808", kMinWhole},
      {"9223372036854775808", 9223372036854775808.0},
      {"-9223372036854775809", -9223372036854775808.0},
      {"123456789012345678901234567890", 1.2345678901234568e29},
      {"0.5", 0.5},
      {"+0.5", 0.5},
      {"-12.25", -12.25},
      {"0.1", 0.1},
      {"00.10", 0.1},
      {std::string(400, '9'), kMaxFloating},
      {"-" + std::string(400, '9') + ".5", -kMaxFloating},
      {"0." + std::string(400, '0') + "1", std::numeric_limits<double>::denorm_min()},
      {"-0." + std::string(400, '0') + "1", -std::numeric_limits<double>::denorm_min()},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(ParseNumber(row.text), row.want) << row.text;
    EXPECT_EQ(Value(row.text).AsNumber(), row.want) << row.text;
    EXPECT_TRUE(Value(row.text).IsNumber() && Num(row.text)) << row.text;
  }
}

TEST(NumberText, OtherTextIsNoNumberAndCountsAsZero) {
  for (const auto& text : kNotNumeric) {
    EXPECT_FALSE(ParseNumber(text).has_value() || Value(text).IsNumber()) << text;
    EXPECT_EQ(Value(text).AsNumber(), Number(std::int64_t{0})) << text;
    EXPECT_EQ(Num(text), text.empty()) << text;
    EXPECT_EQ(Add(text, 3).Text(), "3") << text;
  }
}

TEST(NumberText, EveryFormHasItsText) {
  struct Row {
    Value of;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {Value(), ""},
      {"", ""},
      {"abc", "abc"},
      {"007", "007"},
      {"1.50", "1.50"},
      {" 5", " 5"},
      {"-0", "-0"},
      {std::string("a\0b", 3), std::string_view("a\0b", 3)},
      {std::string_view("\xFE\xFD\xFC\xFF"), "\xFE\xFD\xFC\xFF"},
      {0, "0"},
      {7, "7"},
      {-7, "-7"},
      {kMaxWhole, "9223372036854775807"},
      {kMinWhole, "-9223372036854775808"},
      {Number(std::int64_t{12}), "12"},
      {Number(12.5), "12.5"},
      {0.0, "0"},
      {-0.0, "0"},
      {6.0, "6"},
      {-6.0, "-6"},
      {2.5, "2.5"},
      {-2.5, "-2.5"},
      {0.5, "0.5"},
      {-0.5, "-0.5"},
      {0.1, "0.1"},
      {80.4, "80.4"},
      {100.0, "100"},
      {1000000.0, "1000000"},
      {1.00005, "1"},
      {1.0001, "1.0001"},
      {1.00019, "1.0001"},
      {-1.00019, "-1.0001"},
      {1.0 / 3, "0.3333"},
      {2.0 / 3, "0.6666"},
      {-2.0 / 3, "-0.6666"},
      {0.1 + 0.2, "0.3"},
      {0.29999999999999999, "0.3"},
      {5.9999999999999991, "6"},
      {99.9999999999999, "99.9999"},
      {99.99999999999999, "100"},
      {999.9999999999999, "1000"},
      {0.0001, "0.0001"},
      {0.00099, "0.0009"},
      {0.00009, "0"},
      {-0.00001, "0"},
      {-0.00009999, "0"},
      {1e-300, "0"},
      {-5e-324, "0"},
      {123456789012.34567, "123456789012.346"},
      {99999999999999.94, "99999999999999.9"},
      {999999999999999.9, "1000000000000000"},
      {1e15, "1000000000000000"},
      {1.5e22, "15000000000000000000000"},
      {-1e22, "-10000000000000000000000"},
      {9223372036854775808.0, "9223372036854775808"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(row.of.Text(), row.want);
  }
}

TEST(NumberText, TextOfTheLargestNumberHasAllItsDigits) {
  const std::string text = Value(kMaxFloating).Text();
  EXPECT_EQ(text.size(), 309U);
  EXPECT_EQ(text.substr(0, 30), "179769313486231570814527423731");
  EXPECT_EQ(text.substr(300), "124858368");
  EXPECT_EQ(Value(-kMaxFloating).Text(), "-" + text);
}

TEST(NumberText, DecimalTextKeepsAllSignificantDecimals) {
  struct Row {
    Value of;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {"1.50000000", "1.50000000"},
      {"abc", "abc"},
      {"", ""},
      {5, "5"},
      {5.0, "5"},
      {0.0, "0"},
      {2.675, "2.675"},
      {-0.00001, "-0.00001"},
      {1.0 / 3, "0.333333333333333"},
      {1e-7, "0.0000001"},
      {-1.25e-5, "-0.0000125"},
      {1e20, "100000000000000000000"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(row.of.DecimalText(), row.want);
  }
}

}  // namespace

}  // namespace ptick
