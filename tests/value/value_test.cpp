#include "value/value.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace ptick {

namespace {

constexpr std::int64_t kMaxWhole = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kMinWhole = std::numeric_limits<std::int64_t>::min();
constexpr double kMaxFloating = std::numeric_limits<double>::max();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

TEST(ValueForm, FloatingNumbersAreFinite) {
  struct Row {
    double given;
    double want;
  };
  const std::vector<Row> rows = {
      {kInfinity, kMaxFloating}, {-kInfinity, -kMaxFloating},  {kNotANumber, 0},
      {-kNotANumber, 0},         {kMaxFloating, kMaxFloating},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Value(row.given).AsNumber(), Number(row.want)) << row.given;
    EXPECT_EQ(Value(Number(row.given)).AsNumber(), Number(row.want)) << row.given;
  }
}

TEST(ValueTruth, NumbersAreTrueWhenNotZeroAndTextWhenNeitherEmptyNorZero) {
  const std::vector<Value> truths = {1,
                                     -1,
                                     0.5,
                                     -1e-300,
                                     "1",
                                     "-1",
                                     "DR",
                                     "abc",
                                     " ",
                                     "0 ",
                                     "0.001",
                                     ".0",
                                     "0.",
                                     "-",
                                     "+",
                                     "\xFE",
                                     "0x0",
                                     "0e0",
                                     "0\r",
                                     kMinWhole,
                                     "0." + std::string(400, '0') + "1",
                                     std::string("\0", 1)};
  for (const auto& value : truths) {
    EXPECT_TRUE(value.IsTrue()) << value.Text();
  }
  const std::vector<Value> lies = {Value(), "",   0,    0.0,    -0.0,     "0",        "000",
                                   "0.0",   "-0", "+0", "-0.0", "00.000", kNotANumber};
  for (const auto& value : lies) {
    EXPECT_FALSE(value.IsTrue()) << value.Text();
  }
}

TEST(ValueTruth, OnlyTheEmptyTextIsEmpty) {
  EXPECT_TRUE(Value().Empty());
  EXPECT_TRUE(Value("").Empty());
  for (const Value& value :
       {Value(0), Value(0.0), Value(" "), Value("0"), Value("\xFE"), Value(std::string("\0", 1))}) {
    EXPECT_FALSE(value.Empty()) << value.Text();
  }
  EXPECT_TRUE(Num(0));
  EXPECT_TRUE(Num(-2.5));
}

TEST(ValueCompare, OrdersNumbersAsNumbersAndTextAsBytes) {
  struct Row {
    Value a;
    Value b;
    int want;
  };
  const std::vector<Row> rows = {
      {5, 5, 0},
      {5, 6, -1},
      {-5, -6, 1},
      {5, 5.0, 0},
      {5, 5.5, -1},
      {-0.0, 0, 0},
      {"5", 5, 0},
      {"05", "5.0", 0},
      {"+5", "5", 0},
      {"-0", "0.000", 0},
      {"10", "9", 1},
      {"10", "9a", -1},
      {"10 ", "9", -1},
      {"-2", "-10", 1},
      {"0.1", 0.1, 0},
      {"1e5", 100000, 1},
      {"abc", "abd", -1},
      {"b", "B", 1},
      {"abc", "ab", 1},
      {"ab", "ab", 0},
      {"", "", 0},
      {"", 0, -1},
      {"", "0", -1},
      {0, "", 1},
      {"", "-1", -1},
      {" ", 0, -1},
      {"abc", 0, 1},
      {"\x80", "\x7F", 1},
      {"\xFF", "a", 1},
      {"\xFE", "\xFD", 1},
      {std::string("a\0b", 3), "a", 1},
      {std::string("a\0b", 3), std::string("a\0c", 3), -1},
      {kMaxWhole, static_cast<double>(kMaxWhole), -1},
      {kMinWhole, static_cast<double>(kMinWhole), 0},
      {9007199254740993, 9007199254740992.0, 1},
      {9007199254740991, 9007199254740992.0, -1},
      {kMaxWhole, kInfinity, -1},
      {"9223372036854775807", "9223372036854775806", 1},
      {"0." + std::string(400, '0') + "1", 0, 1},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Compare(row.a, row.b), row.want) << row.a.Text() << " : " << row.b.Text();
    EXPECT_EQ(Compare(row.b, row.a), -row.want) << row.b.Text() << " : " << row.a.Text();
  }
}

TEST(ValueCompare, OperatorsFollowTheOrder) {
  struct Row {
    Value a;
    Value b;
  };
  const std::vector<Row> rows = {{1, 2}, {2, 1}, {"2", 2.0}, {"a", "b"}, {"", 0}};
  for (const auto& row : rows) {
    const int order = Compare(row.a, row.b);
    const std::vector<bool> results = {row.a == row.b, row.a != row.b, row.a<row.b, row.a> row.b,
                                       row.a <= row.b, row.a >= row.b};
    const std::vector<bool> want = {order == 0, order != 0, order<0, order> 0, order <= 0,
                                    order >= 0};
    EXPECT_EQ(results, want) << row.a.Text() << " : " << row.b.Text();
  }
}

}  // namespace

}  // namespace ptick
