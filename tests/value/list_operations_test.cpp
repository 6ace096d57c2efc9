#include "value/list_operations.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "value/arithmetic.h"
#include "value/dynamic_array.h"
#include "value/text.h"

namespace ptick {

namespace {

using namespace std::string_literals;
constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();
/// Arrays are written with '^' for field, ']' for value and '~' for sub-value marks.
std::string Marked(std::string text) {
  for (char& c : text) {
    c = c == '^' ? kFieldMark : c == ']' ? kValueMark : c == '~' ? kSubValueMark : c;
  }
  return text;
}

TEST(LocateOrder, IsReadFromItsCode) {
  EXPECT_EQ(ParseLocateOrder("AR"), LocateOrder::kAscending);
  EXPECT_EQ(ParseLocateOrder("DR"), LocateOrder::kDescending);
  for (const std::string_view code : {"", "A", "D", "AL", "DL", "ar", "dr", "AR ", "1"}) {
    EXPECT_EQ(ParseLocateOrder(code), LocateOrder::kNone) << code;
  }
}

struct LocateRow {
  Value x;
  std::string array;
  std::string_view order;
  bool found;
  std::int64_t position;
};

void ExpectLocated(const std::vector<LocateRow>& rows) {
  for (const auto& row : rows) {
    const Located located = Locate(row.x, Marked(row.array), {}, ParseLocateOrder(row.order));
    EXPECT_EQ(located.found, row.found) << row.x.Text() << " in " << row.array << row.order;
    EXPECT_EQ(located.position, row.position) << row.x.Text() << " in " << row.array << row.order;
  }
}

TEST(Locate, WithoutOrderComparesBytes) {
  ExpectLocated({
      {"b", "a^b^c", "", true, 2},
      {"a", "a^b^a", "", true, 1},
      {"c", "a^b^c", "", true, 3},
      {"d", "a^b^c", "", false, 4},
      {"B", "a^b^c", "", false, 4},
      {"01", "1^01", "", true, 2},
      {1, "01^1.0^1", "", true, 3},
      {1.5, "1.50^1.5", "", true, 2},
      {"", "a^^c", "", true, 2},
      {"", "a^b", "", false, 3},
      {"", "a^", "", true, 2},
      {"", "", "", false, 1},
      {"a", "", "", false, 1},
      {"a", "^", "", false, 3},
      {"a", "a]b", "", false, 2},
      {"ab", "a^b", "", false, 3},
      {"\0"s, "^\0"s, "", true, 2},
      {"\x80", "a^\x80", "", true, 2},
  });
}

TEST(Locate, InOrderStopsAtTheFirstElementThatXShouldPrecede) {
  ExpectLocated({
      {5, "9^7^3", "DR", false, 3},
      {5, "1^4^8", "AR", false, 3},
      {7, "9^7^3", "DR", true, 2},
      {7, "9^7^7^3", "DR", true, 2},
      {9, "9^7^3", "DR", true, 1},
      {3, "9^7^3", "DR", true, 3},
      {10, "9^7^3", "DR", false, 1},
      {1, "9^7^3", "DR", false, 4},
      {10, "1^4^8", "AR", false, 4},
      {0, "1^4^8", "AR", false, 1},
      {4, "1^4^8", "AR", true, 2},
      {9, "10^9", "DR", true, 2},
      {9, "9^10", "AR", true, 1},
      {100, "20^3", "DR", false, 1},
      {5, "", "DR", false, 1},
      {0, "", "AR", false, 1},
      {"", "", "DR", false, 1},
  });
}

TEST(Locate, InOrderComparesAsNumbers) {
  ExpectLocated({
      {"5", "9^05^3", "DR", true, 2},
      {5, "9^5.0^3", "DR", true, 2},
      {"+5", "9^5", "DR", true, 2},
      {4.5, "5^4", "DR", false, 2},
      {"4.50", "5^4.5", "DR", true, 2},
      {-1, "1^0^-2", "DR", false, 3},
      {5, "abc^5", "DR", false, 1},
      {0, "5^abc", "DR", true, 2},
      {"abc", "5^0", "DR", true, 2},
      {"abc", "5^xyz", "DR", true, 2},
      {"", "5^^0", "DR", true, 2},
      {0, "-1^^5", "AR", true, 2},
      {1, "abc^5", "AR", false, 2},
      {" 5", "5^0", "DR", true, 2},
      {9007199254740993, "9007199254740992", "DR", false, 1},
      {"9223372036854775807", "9223372036854775806^1", "DR", false, 1},
      {5, "3^9^7", "DR", false, 1},
      {5, "9^3^5", "AR", false, 1},
  });
}

TEST(Locate, SearchesTheListOfItsLevel) {
  const std::string array = Marked("a]b^c]d~e]f^g");
  struct Row {
    std::string_view x;
    Place level;
    bool found;
    std::int64_t position;
  };
  const std::vector<Row> rows = {
      {"g", {0, 0, 0}, true, 3},   {"g", {0, 5, 5}, true, 3},   {"b", {0, 0, 0}, false, 4},
      {"b", {1, 0, 0}, true, 2},   {"c", {1, 0, 0}, false, 3},  {"f", {2, 0, 0}, true, 3},
      {"d", {2, 0, 0}, false, 4},  {"d", {2, 2, 0}, true, 1},   {"e", {2, 2, 9}, true, 2},
      {"f", {2, 2, 0}, false, 3},  {"g", {3, 0, 0}, true, 1},   {"g", {3, 1, 0}, true, 1},
      {"x", {4, 0, 0}, false, 1},  {"x", {2, 9, 0}, false, 1},  {"a", {-1, 0, 0}, false, 1},
      {"a", {-2, 0, 0}, false, 1}, {"a", {1, -1, 0}, false, 1}, {"", {9, 0, 0}, false, 1},
  };
  for (const auto& row : rows) {
    const Located located = Locate(row.x, array, row.level, LocateOrder::kNone);
    EXPECT_EQ(located.found, row.found) << row.x << " " << row.level.field;
    EXPECT_EQ(located.position, row.position) << row.x << " " << row.level.field;
  }
  EXPECT_EQ(Locate(5, Marked("x^9]7]3"), {2}, LocateOrder::kDescending).position, 3);
  EXPECT_EQ(Locate(5, Marked("x^y]1~4~8"), {2, 2}, LocateOrder::kAscending).position, 3);
}

TEST(Locate, KeepsListsBuiltWithItInOrder) {
  std::string descending;
  std::string ascending;
  for (std::int64_t n = 1; n <= 101; ++n) {
    const Value ticks = n * 37 % 101;
    descending = Insert(descending,
                        {Locate(ticks, descending, {}, LocateOrder::kDescending).position}, ticks);
    ascending =
        Insert(ascending, {Locate(ticks, ascending, {}, LocateOrder::kAscending).position}, ticks);
  }
  for (std::int64_t n = 1; n <= 101; ++n) {
    EXPECT_EQ(Extract(descending, {n}), std::to_string(101 - n));
    EXPECT_EQ(Extract(ascending, {n}), std::to_string(n - 1));
  }
}

TEST(DCount, CountsElements) {
  struct Row {
    std::string of;
    char delimiter;
    std::int64_t want;
  };
  const std::vector<Row> rows = {
      {"", '^', 0},   {"a", '^', 1},      {"a^", '^', 2},  {"^", '^', 2},    {"a^b", '^', 2},
      {"^^", '^', 3}, {"a b  c", ' ', 4}, {"a^b", ']', 1}, {"\0"s, '\0', 2}, {"a", 'a', 2},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(DCount(Marked(row.of), Marked(std::string(1, row.delimiter)).front()), row.want)
        << row.of;
  }
}

TEST(Field, GivesElementsAndWhereTheyStood) {
  struct Row {
    std::string of;
    std::int64_t n;
    std::int64_t count;
    std::string want;
    std::size_t col1;
    std::size_t col2;
  };
  const std::vector<Row> rows = {
      {"a,bb,ccc", 1, 1, "a", 0, 2},
      {"a,bb,ccc", 2, 1, "bb", 2, 5},
      {"a,bb,ccc", 3, 1, "ccc", 5, 9},
      {"a,bb,ccc", 4, 1, "", 9, 9},
      {"a,bb,ccc", kMax, 1, "", 9, 9},
      {"a,bb,ccc", 1, 2, "a,bb", 0, 5},
      {"a,bb,ccc", 2, 2, "bb,ccc", 2, 9},
      {"a,bb,ccc", 2, 9, "bb,ccc", 2, 9},
      {"a,bb,ccc", 1, kMax, "a,bb,ccc", 0, 9},
      {"a,bb,ccc", 0, 1, "a", 0, 2},
      {"a,bb,ccc", -3, 0, "a", 0, 2},
      {"a,bb,ccc", kMin, kMin, "a", 0, 2},
      {"a,bb,ccc", 2, -1, "bb", 2, 5},
      {"", 1, 1, "", 0, 1},
      {"", 2, 1, "", 1, 1},
      {"abc", 1, 1, "abc", 0, 4},
      {"abc", 2, 1, "", 4, 4},
      {"abc,", 1, 1, "abc", 0, 4},
      {"abc,", 2, 1, "", 4, 5},
      {"abc,", 3, 1, "", 5, 5},
      {"abc,", 1, 2, "abc,", 0, 5},
      {",abc", 1, 1, "", 0, 1},
      {",abc", 2, 1, "abc", 1, 5},
      {",,", 2, 1, "", 1, 2},
      {",,", 1, 3, ",,", 0, 3},
      {"a\0,\xFE"s, 2, 1, "\xFE", 3, 5},
  };
  for (const auto& row : rows) {
    const FieldResult field = Field(row.of, ',', row.n, row.count);
    EXPECT_EQ(field.text, row.want) << row.of << " " << row.n << " " << row.count;
    EXPECT_EQ(field.col1, row.col1) << row.of << " " << row.n << " " << row.count;
    EXPECT_EQ(field.col2, row.col2) << row.of << " " << row.n << " " << row.count;
  }
}

TEST(Field, TheRestOfTheLineStartsBehindCol2) {
  struct Row {
    std::string of;
    std::int64_t n;
    std::string_view want;
  };
  const std::vector<Row> rows = {{"a b c", 1, "b c"}, {"a b c", 2, "c"}, {"a b c", 3, ""},
                                 {"a b c", 4, ""},    {"a  c", 1, " c"}, {"", 1, ""},
                                 {"a ", 1, ""}};
  for (const auto& row : rows) {
    const auto start = static_cast<std::int64_t>(Field(row.of, ' ', row.n).col2) + 1;
    EXPECT_EQ(Substring(row.of, start, Len(row.of)), row.want) << row.of << " " << row.n;
  }
}

TEST(Sort, OrdersFieldsByTheirBytes) {
  struct Row {
    std::string of;
    std::string want;
  };
  const std::vector<Row> rows = {
      {"", ""},
      {"a", "a"},
      {"b^a", "a^b"},
      {"b^a^b", "a^b^b"},
      {"10^9^1", "1^10^9"},
      {"a^B^b^A", "A^B^a^b"},
      {"a^^b", "^a^b"},
      {"a^", "^a"},
      {"ab^a", "a^ab"},
      {"\x80^\x7F", "\x7F^\x80"},
      {"b]z^b^a", "a^b^b]z"},
      {"a^\0"s, "\0^a"s},
      {"^^", "^^"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Sort(Marked(row.of)), Marked(row.want)) << row.of;
  }
}

TEST(Sum, AddsAllElementsWhateverMarkSeparatesThem) {
  struct Row {
    std::string of;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {"", "0"},
      {"5", "5"},
      {"1^2^3", "6"},
      {"1]2~3^4", "10"},
      {"1^^3^", "4"},
      {"abc^3^ 5^1e5", "3"},
      {"0.1^0.1^0.1", "0.3"},
      {"1.5^-2.5", "-1"},
      {"007^+3", "10"},
      {"9223372036854775807^1", "9223372036854775808"},
      {"^", "0"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Sum(Marked(row.of)).Text(), row.want) << row.of;
  }
}

TEST(Sum, IsRepeatedAdd) {
  std::string list;
  Value added = 0;
  for (std::int64_t n = -50; n <= 300; n += 7) {
    const Value part = Divide(n * n * n, 100);
    list = Assign(list, {-1}, part);
    added = Add(added, part);
    EXPECT_EQ(Sum(list).AsNumber(), added.AsNumber()) << n;
  }
}

}  // namespace

}  // namespace ptick
