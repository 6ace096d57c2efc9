#include "value/arithmetic.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string_view>
#include <variant>
#include <vector>

#include "value/number_text.h"
#include "value/value.h"

namespace ptick {

namespace {

constexpr std::int64_t kMaxWhole = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kMinWhole = std::numeric_limits<std::int64_t>::min();
constexpr double kMaxFloating = std::numeric_limits<double>::max();

struct Operation {
  Value a;
  Value b;
  std::string_view want;
};

TEST(Arithmetic, Adds) {
  const std::vector<Operation> rows = {
      {2, 3, "5"},
      {2, "3", "5"},
      {"2.5", "0.5", "3"},
      {"", "", "0"},
      {"abc", 4, "4"},
      {" 5", 4, "4"},
      {"5\r", 4, "4"},
      {0.1, 0.2, "0.3"},
      {-0.1, 0.1, "0"},
      {1.0 / 3, 1.0 / 3, "0.6666"},
      {kMaxWhole, 0, "9223372036854775807"},
      {kMaxWhole, 1, "9223372036854775808"},
      {kMinWhole, -1, "-9223372036854775808"},
      {kMaxWhole, kMinWhole, "-1"},
      {1'000'000'000'000'000, 0.5, "1000000000000000"},
      {100'000'000'000, 0.25, "100000000000.25"},
      {100'000'000'000.25, 1, "100000000001.25"},
      {kMaxWhole, 0.5, "9223372036854775808"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Add(row.a, row.b).Text(), row.want) << row.a.Text() << " + " << row.b.Text();
    EXPECT_EQ(Add(row.b, row.a).Text(), row.want) << row.b.Text() << " + " << row.a.Text();
  }
}

TEST(Arithmetic, Subtracts) {
  const std::vector<Operation> rows = {
      {2, 3, "-1"},
      {0.3, 0.1, "0.2"},
      {"4.02", "4.01", "0.01"},
      {"", 5, "-5"},
      {"x", "y", "0"},
      {-1, kMinWhole, "9223372036854775807"},
      {0, kMinWhole, "9223372036854775808"},
      {kMinWhole, 1, "-9223372036854775808"},
      {1.0 / 3, 0.25, "0.0833"},
      {kMaxWhole, 0.5, "9223372036854775808"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Subtract(row.a, row.b).Text(), row.want) << row.a.Text() << " - " << row.b.Text();
  }
}

TEST(Arithmetic, Multiplies) {
  const std::vector<Operation> rows = {
      {6, 7, "42"},
      {"6", "-7", "-42"},
      {"", 7, "0"},
      {"abc", 7, "0"},
      {0.1, 3, "0.3"},
      {0.57, 10000, "5700"},
      {0.29, 100, "29"},
      {12345678.9, 10000, "123456789000"},
      {0.0001, 0.0001, "0"},
      {0.5, 0.5, "0.25"},
      {-0.5, 0, "0"},
      {3037000500, 3037000500, "9223372037000249344"},
      {kMaxWhole, 10, "92233720368547758080"},
      {kMinWhole, -1, "9223372036854775808"},
      {0.1, kMaxWhole, "922337203685477632"},
      {12345678.9012, 12345678.9012, "152415787531535"},
      {1.0 / 3, 3, "1"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Multiply(row.a, row.b).Text(), row.want) << row.a.Text() << " * " << row.b.Text();
    EXPECT_EQ(Multiply(row.b, row.a).Text(), row.want) << row.b.Text() << " * " << row.a.Text();
  }
}

TEST(Arithmetic, Divides) {
  const std::vector<Operation> rows = {
      {10, 4, "2.5"},
      {10, 5, "2"},
      {1, 3, "0.3333"},
      {-2, 3, "-0.6666"},
      {0.3, 0.1, "3"},
      {"4.02", "0.02", "201"},
      {5700, 100, "57"},
      {0, -5, "0"},
      {"", 5, "0"},
      {"abc", 5, "0"},
      {5, 0, "0"},
      {5, 0.0, "0"},
      {5, "", "0"},
      {5, "abc", "0"},
      {-5, "0.00", "0"},
      {0, 0, "0"},
      {kMaxWhole, kMaxWhole, "1"},
      {kMinWhole, -1, "9223372036854775808"},
      {kMaxWhole, 0.5, "18446744073709551616"},
      {1.0 / 3, 2, "0.1666"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Divide(row.a, row.b).Text(), row.want) << row.a.Text() << " / " << row.b.Text();
  }
}

TEST(Arithmetic, ResultsStayFinite) {
  EXPECT_EQ(Add(kMaxFloating, kMaxFloating).AsNumber(), Number(kMaxFloating));
  EXPECT_EQ(Subtract(-kMaxFloating, kMaxFloating).AsNumber(), Number(-kMaxFloating));
  EXPECT_EQ(Multiply(kMaxFloating, -2).AsNumber(), Number(-kMaxFloating));
  EXPECT_EQ(Divide(kMaxFloating, 0.5).AsNumber(), Number(kMaxFloating));
  EXPECT_EQ(Divide(1, std::numeric_limits<double>::denorm_min()).AsNumber(), Number(kMaxFloating));
}

TEST(Arithmetic, WholeResultsOfWholeNumbersAreWhole) {
  EXPECT_EQ(Add(kMaxWhole, -1).AsNumber(), Number(kMaxWhole - 1));
  EXPECT_EQ(Subtract(kMinWhole, -1).AsNumber(), Number(kMinWhole + 1));
  EXPECT_EQ(Multiply(3037000499, 3037000499).AsNumber(), Number(std::int64_t{9223372030926249001}));
  EXPECT_EQ(Add("0.5", "0.5").AsNumber(), Number(std::int64_t{1}));
}

TEST(Arithmetic, RepeatedSumsOfHundredthsAreExact) {
  struct Row {
    std::string_view each;
    int times;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {"0.1", 60, "6"},           {"4.02", 20, "80.4"}, {"0.01", 100000, "1000"},
      {"0.0001", 9999, "0.9999"}, {"-0.1", 10, "-1"},   {"33.33", 3, "99.99"},
  };
  for (const auto& row : rows) {
    Value text_sum = 0;
    Value number_sum = 0;
    const Value number = Value(*ParseNumber(row.each));
    for (int i = 0; i < row.times; ++i) {
      text_sum = Add(text_sum, row.each);
      number_sum = Add(number_sum, number);
    }
    EXPECT_EQ(text_sum.Text(), row.want) << row.each;
    EXPECT_EQ(number_sum.AsNumber(), *ParseNumber(row.want)) << row.each;
  }
}

TEST(Arithmetic, EveryFourDecimalFigureComesBackFromASumAndAProduct) {
  for (std::int64_t digits = -30000; digits <= 30000; digits += 7) {
    const Value figure = Divide(digits, 10000);
    EXPECT_EQ(Multiply(figure, 10000).AsNumber(), Number(digits));
    EXPECT_EQ(Subtract(Add(figure, "12345.6789"), "12345.6789"), figure) << digits;
  }
}

TEST(Arithmetic, PercentagesAreCutNotRounded) {
  struct Row {
    Value part;
    Value total;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {1, 3, "33.33"},          {2, 3, "66.66"},     {57, 100, "57"},
      {0.57, 1, "57"},          {29, 10000, "0.29"}, {1, 0, "0"},
      {"0.1", "0.3", "33.33"},  {1, 1, "100"},       {9999, 10000, "99.99"},
      {99999, 100000, "99.99"}, {1, 100000, "0"},
  };
  for (const auto& row : rows) {
    const Value percentage = Divide(Int(Divide(Multiply(row.part, 10000), row.total)), 100);
    EXPECT_EQ(percentage.Text(), row.want) << row.part.Text() << " of " << row.total.Text();
  }
}

TEST(Arithmetic, NegatesAndIncrements) {
  EXPECT_EQ(Negate(5).Text(), "-5");
  EXPECT_EQ(Negate("-2.5").Text(), "2.5");
  EXPECT_EQ(Negate(0).Text(), "0");
  EXPECT_EQ(Negate(0.0).Text(), "0");
  EXPECT_EQ(Negate("").Text(), "0");
  EXPECT_EQ(Negate("abc").Text(), "0");
  EXPECT_EQ(Negate(kMaxWhole).Text(), "-9223372036854775807");
  EXPECT_EQ(Negate(kMinWhole).Text(), "9223372036854775808");
  EXPECT_EQ(Increment(41).Text(), "42");
  EXPECT_EQ(Increment("").Text(), "1");
  EXPECT_EQ(Increment("x").Text(), "1");
  EXPECT_EQ(Increment("-0.5").Text(), "0.5");
  EXPECT_EQ(Increment(kMaxWhole).Text(), "9223372036854775808");
}

TEST(Arithmetic, IntCutsTowardZero) {
  struct Row {
    Value of;
    Number want;
  };
  const std::vector<Row> rows = {
      {-2.7, std::int64_t{-2}},
      {"-2.7", std::int64_t{-2}},
      {2.7, std::int64_t{2}},
      {"2.999999999", std::int64_t{2}},
      {-0.5, std::int64_t{0}},
      {5, std::int64_t{5}},
      {"007", std::int64_t{7}},
      {"", std::int64_t{0}},
      {"abc", std::int64_t{0}},
      {kMinWhole, kMinWhole},
      {-9223372036854775808.0, kMinWhole},
      {9223372036854775808.0, 9223372036854775808.0},
      {9007199254740991.0, std::int64_t{9007199254740991}},
      {-1e300, -1e300},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Int(row.of).AsNumber(), row.want) << row.of.Text();
  }
}

}  // namespace

}  // namespace ptick
