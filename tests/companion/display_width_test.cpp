#include "companion/display_width.h"

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

namespace ptick::companion {

namespace {

TEST(DisplayWidth, CountsColumns) {
  struct Row {
    std::string_view text;
    std::size_t want;
  };
  const std::vector<Row> rows = {
      {"", 0},
      {"abc ~", 5},
      {"caf\xC3\xA9", 4},
      // Wide: hiragana, Hangul, an ideograph beyond 16 bits, a face.
      {"\xE3\x81\x82", 2},
      {"\xEA\xB0\x80", 2},
      {"\xF0\xA0\x80\x80", 2},
      {"\xF0\x9F\x98\x80", 2},
      // Full and half width letters.
      {"\xEF\xBC\xA1\xEF\xBD\xB1", 3},
      // Combining: e and an acute, a variation selector.
      {"e\xCC\x81", 1},
      {"\xE2\x9D\xA4\xEF\xB8\x8F", 1},
      {"\x1b\t\n", 3},
      {"caf\xE9", 4},
      {"\xE3\x81", 2},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(DisplayWidth(row.text), row.want) << row.text;
  }
}

TEST(DisplayWidth, CutsBetweenCharacters) {
  struct Row {
    std::string_view text;
    std::size_t columns;
    std::string_view part;
    std::string_view cut;
  };
  const std::vector<Row> rows = {
      {"", 0, "", ""},
      {"abcdef", 6, "abcdef", "abcdef"},
      {"abcdef", 5, "abcde", "ab..."},
      {"abcdef", 4, "abcd", "a..."},
      {"abcdef", 3, "abc", "..."},
      {"abcdef", 2, "ab", ".."},
      {"abcdef", 0, "", ""},
      // Half of a wide character does not fit.
      {"\xE3\x81\x82\xE3\x81\x84", 3, "\xE3\x81\x82", "..."},
      {"\xE3\x81\x82\xE3\x81\x84\xE3\x81\x86", 5, "\xE3\x81\x82\xE3\x81\x84", "\xE3\x81\x82..."},
      {"\xE3\x81\x82\xE3\x81\x84\xE3\x81\x86", 4, "\xE3\x81\x82\xE3\x81\x84", "..."},
      // What combines stays with its letter.
      {"ae\xCC\x81x", 2, "ae\xCC\x81", ".."},
      {"ae\xCC\x81", 2, "ae\xCC\x81", "ae\xCC\x81"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(FittingPart(row.text, row.columns), row.part) << row.text << " " << row.columns;
    EXPECT_EQ(CutToWidth(row.text, row.columns), row.cut) << row.text << " " << row.columns;
  }
}

}  // namespace

}  // namespace ptick::companion
