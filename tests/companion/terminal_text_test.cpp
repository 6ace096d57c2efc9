#include "companion/terminal_text.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "companion/utf8.h"

namespace ptick::companion {

namespace {

using namespace std::string_view_literals;

TEST(TerminalText, HasNothingThatDrivesATerminal) {
  struct Row {
    std::string_view text;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {"", ""},
      {"plain\n\ttext", "plain\n\ttext"},
      {"\x1b[2J\x07", "?[2J?"},
      {"a\r\nb", "a?\nb"},
      {"\0\x08\x7F"sv, "???"},
      // C1 in UTF-8 and as bytes.
      {"\xC2\x9B"
       "2J",
       "?2J"},
      {"\x9B"
       "2J \x80\x9F",
       "?2J ??"},
      // Latin-1 letters, and the first character after C1.
      {"caf\xE9 \xA0 \xC2\xA0", "caf\xE9 \xA0 \xC2\xA0"},
      {"caf\xC3\xA9 \xE3\x81\x82", "caf\xC3\xA9 \xE3\x81\x82"},
      // What reorders and what hides.
      {"a\xE2\x80\xAEz", "a?z"},  // NOLINT(misc-misleading-bidirectional)
      {"a\xE2\x80\x8Bz", "a?z"},
      {"a\xE2\x81\xA6z", "a?z"},  // NOLINT(misc-misleading-bidirectional)
      {"\xEF\xBB\xBFz", "?z"},
      {"\xF3\xA0\x81\x81z", "?z"},
      // Longer forms of ESC and of U+202E are no UTF-8; bytes of theirs count one by one.
      {"\xC0\x9B", "\xC0?"},
      {"\xF0\x82\x80\xAE", "\xF0??\xAE"},
      // Cut off.
      {"a\xE2\x80", "a\xE2?"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(TerminalText(row.text, TextPlace::kLines), row.want) << row.text;
    std::string text = "\x1b[1m";
    AppendTerminalText(text, row.text, TextPlace::kLines);
    EXPECT_EQ(text, "\x1b[1m" + std::string(row.want)) << row.text;
  }
}

TEST(TerminalText, StaysInItsPlace) {
  EXPECT_EQ(TerminalText("a\tb\nc\r", TextPlace::kLines), "a\tb\nc?");
  EXPECT_EQ(TerminalText("a\tb\nc\r", TextPlace::kLine), "a\tb?c?");
  EXPECT_EQ(TerminalText("a\tb\nc\r", TextPlace::kCell), "a?b?c?");
}

TEST(TerminalText, KeepsAllOtherCharacters) {
  std::vector<std::string> replaced;
  char32_t first = 0;
  bool was_replaced = false;
  for (char32_t code = 0; code <= 0x10FFFF; ++code) {
    if (code >= 0xD800 && code <= 0xDFFF) {
      continue;
    }
    std::string character;
    AppendCharacter(character, code);
    const std::string text = TerminalText(character, TextPlace::kCell);
    const bool is_replaced = text == "?" && code != '?';
    ASSERT_TRUE(is_replaced || text == character) << static_cast<unsigned>(code);
    ASSERT_EQ(is_replaced, DrivesTerminal(code)) << static_cast<unsigned>(code);
    if (is_replaced && !was_replaced) {
      first = code;
    }
    if (!is_replaced && was_replaced) {
      std::array<char, 32> range = {};
      std::snprintf(range.data(), range.size(), "%X-%X", static_cast<unsigned>(first),
                    static_cast<unsigned>(code - 1));
      replaced.emplace_back(range.data());
    }
    was_replaced = is_replaced;
  }
  EXPECT_EQ(replaced, (std::vector<std::string>{"0-1F", "7F-9F", "200B-200F", "2028-202E",
                                                "2060-2069", "FEFF-FEFF", "E0000-E007F"}));
}

}  // namespace

}  // namespace ptick::companion
