#include "output/terminal_text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ptick {

namespace {

using namespace std::string_literals;

std::string Harmless(std::string text) {
  MakeHarmless(text);
  return text;
}

TEST(HarmlessText, ShowsWhatDrivesReordersOrHidesAsQuestionMarks) {
  struct Row {
    std::string text;
    std::string want;
  };
  const std::vector<Row> rows = {
      {"", ""},
      {"plain ~", "plain ~"},
      {"\t\n", "\t\n"},
      {"\0\a\b\v\f\r\x1b[2J\x1f\x7f"s, "???????[2J??"},
      // Control characters as UTF-8 and as single bytes.
      {"\u0080\u009B2J\u009F", "??2J?"},
      {"\x80\x9B"
       "2J\x9F",
       "??2J?"},
      {"\u007E\u00A0\u00E9", "\u007E\u00A0\u00E9"},
      {"\xA0\xE9\xFF\xFE\xC0", "\xA0\xE9\xFF\xFE\xC0"},
      // The same bytes in the middle of a character are part of it.
      {"\u2500\u4E80\U0001F600", "\u2500\u4E80\U0001F600"},
      // What is left of a character that was cut is bytes.
      {"\xE2\x94", "\xE2?"},
      {"\xE2\xA4 \xF0\x9F\x98", "\xE2\xA4 \xF0??"},
      {"\xC0\x9B", "\xC0?"},
      {"\xE0\x80\x9B", "\xE0??"},
      {"\xED\xA0\x80", "\xED\xA0?"},
      // Edges of what reorders and hides.
      {"\u200A\u200B\u200C\u200D\u200E\u200F\u2010", "\u200A?????\u2010"},
      // NOLINTNEXTLINE(misc-misleading-bidirectional): that is what is replaced
      {"\u2027\u2028\u2029\u202A\u202B\u202C\u202D\u202E\u202F", "\u2027???????\u202F"},
      {"\u205F\u2060\u2064\u2065\u2066\u2069\u206A", "\u205F?????\u206A"},
      {"\uFEFE\uFEFF\uFF00", "\uFEFE?\uFF00"},
      {"\U000DFFFF\U000E0000\U000E0041\U000E007F\U000E0080", "\U000DFFFF???\U000E0080"},
      // Accents stay with their letter.
      {"e\u0301", "e\u0301"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Harmless(row.text), row.want) << ::testing::PrintToString(row.text);
  }
}

TEST(HarmlessText, JudgesEveryByteAlone) {
  for (int byte = 0; byte < 256; ++byte) {
    const bool harmful = (byte < 32 && byte != '\t' && byte != '\n') || byte == 127 ||
                         (byte >= 0x80 && byte <= 0x9F);
    const std::string text(1, static_cast<char>(byte));
    EXPECT_EQ(Harmless(text), harmful ? "?" : text) << byte;
    EXPECT_EQ(Harmless("a" + text + "b"), harmful ? "a?b" : "a" + text + "b") << byte;
  }
}

TEST(HarmlessText, StaysAsItIsOnceItIsHarmless) {
  const std::string text = Harmless("\x1b\u202E\xE2\x94x\xC2\x9B\u4E2D\t");
  EXPECT_EQ(Harmless(text), text);
}

TEST(RowCount, IsThatOfATerminal) {
  struct Row {
    std::string text;
    std::int64_t columns;
    std::int64_t want;
  };
  const std::vector<Row> rows = {
      {"", 80, 1},
      {"\n", 80, 2},
      {"\n\n", 80, 3},
      {"a\nb", 80, 2},
      {"a\nb\n", 80, 3},
      {"a\n\nb", 80, 3},
      {std::string(79, 'x'), 80, 1},
      // A full row is left only when there is more to write.
      {std::string(80, 'x'), 80, 1},
      {std::string(80, 'x') + "\nb", 80, 2},
      {std::string(80, 'x') + "\u0301", 80, 1},
      {std::string(81, 'x'), 80, 2},
      {std::string(160, 'x'), 80, 2},
      {std::string(161, 'x'), 80, 3},
      {std::string(40, 'x'), 20, 2},
      {"xxx", 1, 3},
      // A character takes the cells it takes, not its bytes.
      {"\u00E9\u00E9\u00E9\u00E9", 4, 1},
      {"\u00E9\u00E9\u00E9\u00E9\u00E9", 4, 2},
      {"e\u0301e\u0301e\u0301e\u0301", 4, 1},
      {"\u4E2D\u4E2D", 4, 1},
      {"\u4E2D\u4E2D\u4E2D", 4, 2},
      // A double-width character does not fit into the last cell of a row.
      {"x\u4E2D\u4E2D", 4, 2},
      {"xxx\u4E2D", 4, 2},
      {"\u4E2D\u4E2D\u4E2D\u4E2D", 5, 2},
      {"\u4E2D\u4E2D\u4E2D\u4E2D\u4E2D", 5, 3},
      {"\u4E2D\u4E2D", 1, 2},
      // Bytes that are no characters take a cell each.
      {"\xFF\xFE\xE2\xA4", 4, 1},
      {"\xFF\xFE\xE2\xA4\xF0", 4, 2},
      // A TAB goes to the next stop and no further than the last column.
      {"\t", 80, 1},
      {"\tx", 9, 1},
      {"\txx", 9, 2},
      {"1234567\tx", 9, 1},
      {"12345678\tx", 17, 1},
      {"12345678\txx", 17, 2},
      {"\t\t\t\tx", 9, 1},
      {"\t\t\t\txx", 9, 2},
      {"123456789\t", 9, 1},
      {"123456789\tx", 9, 2},
      {"\tx", 1, 1},
      {"\txx", 1, 2},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(CountRows(row.text, row.columns), row.want)
        << ::testing::PrintToString(row.text) << " in " << row.columns;
  }
}

}  // namespace

}  // namespace ptick
