#include "ptick_export/formats/plain_names.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "companion/distinct_texts.h"

namespace ptick::exports {

namespace {

constexpr PlainNameRules kAll = {.semicolons = true, .hash_signs = true, .outer_blanks = true};

std::string Plain(std::string_view name, const PlainNameRules& rules) {
  std::string text = "<";
  AppendPlainName(text, name, rules);
  return text.substr(1);
}

TEST(PlainNames, EscapeWhatMeansSomething) {
  struct Row {
    std::string_view name;
    std::string_view none;
    std::string_view all;
  };
  const std::vector<Row> rows = {
      {"STOCK.CHECK", "STOCK.CHECK", "STOCK.CHECK"},
      {"", "(empty)", "(empty)"},
      {"(empty)", R"(\x28empty))", R"(\x28empty))"},
      {"(1) A", "(1) A", "(1) A"},
      {"A;B", "A;B", R"(A\x3bB)"},
      {"#1", "#1", R"(\x231)"},
      {R"(C:\A)", R"(C:\\A)", R"(C:\\A)"},
      {" A ", " A ", R"(\x20A\x20)"},
      {" ", " ", R"(\x20)"},
      {"  ", "  ", R"(\x20\x20)"},
      {"a b", "a b", "a b"},
      {"a\tb\r\x01\x7F", R"(a\x09b\x0d\x01\x7f)", R"(a\x09b\x0d\x01\x7f)"},
      {"\xC2\x85\xC2\x9B\xC2\xA0", "\\x85\\x9b\xC2\xA0", "\\x85\\x9b\xC2\xA0"},
      {"\xE2\x80\xA7\xE2\x80\xA8\xE2\x80\xA9", "\xE2\x80\xA7\\u2028\\u2029",
       "\xE2\x80\xA7\\u2028\\u2029"},
      {"caf\xC3\xA9 \xF0\x9F\x98\x80", "caf\xC3\xA9 \xF0\x9F\x98\x80",
       "caf\xC3\xA9 \xF0\x9F\x98\x80"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Plain(row.name, {}), row.none) << row.name;
    EXPECT_EQ(Plain(row.name, kAll), row.all) << row.name;
  }
  EXPECT_EQ(Plain(std::string_view("\0", 1), {}), R"(\x00)");
}

TEST(PlainNames, KeepNamesApart) {
  const std::vector<std::string_view> pieces = {"\\",   "x28",  "(empty)", ";", " ", "#",
                                                "\xE9", "\xC3", "\xA9",    "A", "(", "\x01"};
  std::mt19937 random(11);
  std::uniform_int_distribution<std::size_t> piece(0, pieces.size() - 1);
  std::uniform_int_distribution<int> length(0, 4);
  companion::DistinctTexts distinct;
  std::set<std::string> names;
  std::set<std::string> texts;
  for (int n = 0; n < 20'000; ++n) {
    std::string name;
    for (int more = length(random); more > 0; --more) {
      name += pieces[piece(random)];
    }
    if (names.insert(name).second) {
      EXPECT_TRUE(texts.insert(Plain(distinct.Of(name), kAll)).second) << name;
    }
  }
}

}  // namespace

}  // namespace ptick::exports
