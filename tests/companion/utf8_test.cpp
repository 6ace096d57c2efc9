#include "companion/utf8.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "output/utf8.h"

namespace ptick::companion {

namespace {

using namespace std::string_view_literals;

TEST(Utf8, IsToldFromOtherBytes) {
  struct Row {
    std::string_view text;
    bool want;
  };
  const std::vector<Row> rows = {
      {"", true},
      {"plain, and longer than a word of the machine", true},
      {"\0\x01\x7F"sv, true},
      {"caf\xC3\xA9", true},
      {"seventeen letters \xC3\xA9 and more", true},
      {"\xC2\x80 \xDF\xBF \xE0\xA0\x80 \xEF\xBF\xBF \xF0\x90\x80\x80 \xF4\x8F\xBF\xBF", true},
      {"\xEE\x80\x80\xED\x9F\xBF", true},
      {"caf\xE9", false},
      {"\x80", false},
      {"\xC3", false},
      {"\xC3(", false},
      {"\xE2\x82", false},
      {"\xF0\x9F\x98", false},
      {"\xC0\x80", false},
      {"\xC1\xBF", false},
      {"\xE0\x9F\xBF", false},
      {"\xF0\x8F\xBF\xBF", false},
      {"\xED\xA0\x80", false},
      {"\xED\xBF\xBF", false},
      {"\xF4\x90\x80\x80", false},
      {"\xF8\x88\x80\x80\x80", false},
      {"\xFE", false},
      {"\xFF", false},
      {"good \xC3\xA9, then \xA9", false},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(IsUtf8(row.text), row.want) << row.text;
  }
}

TEST(Utf8, IsWhatItWasOrLatin1) {
  struct Row {
    std::string_view text;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {"", ""},
      {"plain", "plain"},
      {"caf\xC3\xA9", "caf\xC3\xA9"},
      {"caf\xE9", "caf\xC3\xA9"},
      // One byte makes all of it Latin-1.
      {"caf\xC3\xA9 \xE9", "caf\xC3\x83\xC2\xA9 \xC3\xA9"},
      {"\x80\x9F\xA0\xFF", "\xC2\x80\xC2\x9F\xC2\xA0\xC3\xBF"},
      {"\0\xFE"sv, "\0\xC3\xBE"sv},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(ToUtf8(row.text), row.want) << row.text;
    std::string text = "before ";
    AppendUtf8(text, row.text);
    EXPECT_EQ(text, "before " + std::string(row.want)) << row.text;
  }
}

TEST(Utf8, HasEveryCharacter) {
  std::string all;
  for (char32_t code = 0; code <= 0x10FFFF; ++code) {
    if (code >= 0xD800 && code <= 0xDFFF) {
      continue;
    }
    std::string text;
    AppendCharacter(text, code);
    const DecodedCharacter character = DecodeCharacter(text);
    ASSERT_EQ(character.code, code);
    ASSERT_EQ(character.size, text.size()) << static_cast<unsigned>(code);
    ASSERT_TRUE(IsUtf8(text));
    all += text;
  }
  EXPECT_TRUE(IsUtf8(all));
  EXPECT_EQ(ToUtf8(all), all);
}

TEST(Utf8, KnowsHowMuchIsAscii) {
  for (std::size_t size = 0; size < 20; ++size) {
    const std::string ascii(size, 'a');
    EXPECT_EQ(AsciiPrefix(ascii), size);
    EXPECT_EQ(AsciiPrefix(ascii + "\x80" + std::string(9, 'b')), size);
    EXPECT_EQ(AsciiPrefix(ascii + "\xFF"), size);
  }
}

}  // namespace

}  // namespace ptick::companion
