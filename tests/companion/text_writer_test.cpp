#include "companion/text_writer.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace ptick::companion {

namespace {

constexpr TextForm kPipe = {};

TextForm Terminal(std::size_t columns, bool has_color = false) {
  return {.to_terminal = true, .has_color = has_color, .columns = columns};
}

std::string Line(std::string_view text, const TextForm& form) {
  StringSink sink;
  TextWriter(sink, form).Line(text);
  return sink.Text();
}

TEST(TextWriter, KeepsTextAsItIsForPipes) {
  EXPECT_EQ(Line("a\x1b[1m\tb\r caf\xC3\xA9", kPipe), "a\x1b[1m\tb\r caf\xC3\xA9\n");
  EXPECT_EQ(Line(std::string(1000, 'x'), kPipe), std::string(1000, 'x') + "\n");
  EXPECT_EQ(Line("caf\xE9", kPipe), "caf\xC3\xA9\n");
}

TEST(TextWriter, IsSafeOnTerminals) {
  EXPECT_EQ(Line("a\x1b[1m\tb\r\nc caf\xE9 \x9B", Terminal(80)), "a?[1m\tb??c caf\xC3\xA9 ?\n");
}

TEST(TextWriter, CutsLinesOnTerminals) {
  struct Row {
    std::string_view text;
    std::size_t columns;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {"", 1, ""},
      {"abcde", 5, "abcde"},
      {"abcdef", 5, "abcd>"},
      {"ab", 1, ">"},
      {"\xE3\x81\x82\xE3\x81\x84", 4, "\xE3\x81\x82\xE3\x81\x84"},
      {"\xE3\x81\x82\xE3\x81\x84", 3, "\xE3\x81\x82>"},
      // The '>' comes early where half a character would have to be shown.
      {"a\xE3\x81\x82\xE3\x81\x84", 4, "a\xE3\x81\x82>"},
      {"\xE3\x81\x82\xE3\x81\x84\xE3\x81\x86", 4, "\xE3\x81\x82>"},
      // A TAB goes to the next multiple of eight.
      {"\ta", 9, "\ta"},
      {"\tab", 9, "\t>"},
      {"\tab", 8, ">"},
      {"abcdefg\tx\ty", 17, "abcdefg\tx\ty"},
      {"abcdefg\tx\tyz", 17, "abcdefg\tx\t>"},
      {"abcdefgh\tx", 12, "abcdefgh>"},
      {"\t", 7, ">"},
      {"\t", 8, "\t"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Line(row.text, Terminal(row.columns)), std::string(row.want) + "\n")
        << row.text << " " << row.columns;
  }
}

TEST(TextWriter, ColorsPieces) {
  const auto write = [](const TextForm& form) {
    StringSink sink;
    TextWriter writer(sink, form);
    writer.Add("ab").Add("cd", Style::kHot).Blanks(2).Add("", Style::kHot).Add("ef", Style::kFaint);
    writer.EndLine();
    writer.Line("next", Style::kHeading);
    return sink.Text();
  };
  EXPECT_EQ(write(kPipe), "abcd  ef\nnext\n");
  EXPECT_EQ(write({.to_terminal = false, .has_color = true, .columns = {}}),
            "ab\x1b[1;31mcd\x1b[0m  \x1b[2mef\x1b[0m\n\x1b[1mnext\x1b[0m\n");
  EXPECT_EQ(write(Terminal(4, true)), "ab\x1b[1;31mc\x1b[0m\x1b[2m>\x1b[0m\n\x1b[1mnext\x1b[0m\n");
  EXPECT_EQ(write(Terminal(3, true)), "ab\x1b[2m>\x1b[0m\n\x1b[1mne\x1b[0m\x1b[2m>\x1b[0m\n");
}

}  // namespace

}  // namespace ptick::companion
