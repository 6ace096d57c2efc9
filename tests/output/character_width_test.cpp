#include "output/character_width.h"

#include <gnu/libc-version.h>
#include <gtest/gtest.h>

#include <clocale>
#include <cwchar>
#include <string_view>
#include <utility>
#include <vector>

#include "output/character_width_tables.h"

namespace ptick {

namespace {

TEST(CharacterWidth, IsThatOfTheCells) {
  const std::vector<std::pair<char32_t, int>> rows = {
      {U'A', 1},          {U'~', 1},          {U'\u00E9', 1},     {U'\u00AD', 1},
      {U'\u02FF', 1},     {U'\u0300', 0},     {U'\u036F', 0},     {U'\u0370', 1},
      {U'\u05B0', 0},     {U'\u20AC', 1},     {U'\u2500', 1},     {U'\u20D0', 0},
      {U'\uFE0F', 0},     {U'\u1100', 2},     {U'\u1160', 0},     {U'\u3000', 2},
      {U'\u4E2D', 2},     {U'\uAC00', 2},     {U'\uFF21', 2},     {U'\uFF71', 1},
      {U'\uFFFD', 1},     {U'\U0001F600', 2}, {U'\U0001F170', 1}, {U'\U00020000', 2},
      {U'\U0002FFFD', 2}, {U'\U0003FFFD', 2}, {U'\U0003FFFE', 1}, {U'\U000E0100', 0},
      {U'\U0010FFFF', 1},
  };
  for (const auto& [code, want] : rows) {
    EXPECT_EQ(CharacterWidth(code), want) << std::hex << static_cast<unsigned int>(code);
  }
}

TEST(CharacterWidth, IsThatOfTheCLibrary) {
  if (std::string_view(gnu_get_libc_version()) != "2.36") {
    GTEST_SKIP() << "another version has other characters";
  }
  ASSERT_NE(std::setlocale(LC_CTYPE, "C.UTF-8"), nullptr);
  int compared = 0;
  for (char32_t code = 1; code <= 0x10FFFF; ++code) {
    if (const int width = ::wcwidth(static_cast<wchar_t>(code)); width >= 0) {
      EXPECT_EQ(CharacterWidth(code), width) << std::hex << static_cast<unsigned int>(code);
      ++compared;
    }
  }
  std::setlocale(LC_CTYPE, "C");
  EXPECT_GT(compared, 200000);
}

template <typename Table>
void CheckAscends(const Table& table) {
  char32_t before = 0;
  for (const CharacterRange& range : table) {
    EXPECT_LT(before, range.first);
    EXPECT_LE(range.first, range.last);
    before = range.last;
  }
}

TEST(CharacterWidth, ComesFromTablesThatAscend) {
  CheckAscends(kCombining);
  CheckAscends(kWide);
}

}  // namespace

}  // namespace ptick
