#include "companion/table.h"

#include <gtest/gtest.h>

#include <span>
#include <string>
#include <vector>

namespace ptick::companion {

namespace {

using Rows = std::vector<std::vector<Cell>>;

std::string Print(const std::vector<Column>& columns, const Rows& rows, const TextForm& form) {
  StringSink sink;
  TextWriter writer(sink, form);
  PrintTable(writer, columns, rows.size(), [&rows](std::size_t row, std::span<Cell> cells) {
    for (std::size_t i = 0; i < rows[row].size(); ++i) {
      cells[i] = rows[row][i];
    }
  });
  return sink.Text();
}

const std::vector<Column> kColumns = {
    {.heading = "Ticks", .align = Align::kRight},
    {.heading = "Program", .align = Align::kLeft, .gives_way = true},
    {.heading = "Line", .align = Align::kRight},
    {.heading = "Note"},
};

TEST(Table, AlignsByDisplayWidth) {
  const Rows rows = {
      {{.text = "1,204"}, {.text = "A"}, {.text = "7"}, {.text = "hot"}},
      {{.text = "3"}, {.text = "\xE3\x81\x82\xE3\x81\x84\xE3\x81\x86\xE3\x81\x88"}, {.text = "61"}},
      {{.text = "123456"}, {.text = "e\xCC\x81t\xE9"}},
      {{.text = "1"}, {.text = "caf\xE9"}, {.text = "2"}, {.text = "cold, and long"}},
  };
  EXPECT_EQ(Print(kColumns, rows, {}),
            " Ticks  Program   Line  Note\n"
            " 1,204  A            7  hot\n"
            "     3  \xE3\x81\x82\xE3\x81\x84\xE3\x81\x86\xE3\x81\x88    61\n"
            "123456  e\xC3\x8C\xC2\x81t\xC3\xA9\n"
            "     1  caf\xC3\xA9         2  cold, and long\n");
}

TEST(Table, MayHaveNoHeadingsOrRows) {
  EXPECT_EQ(Print({{.heading = "", .align = Align::kRight}, {.heading = ""}},
                  {{{.text = "1"}, {.text = "a"}}, {{.text = "22"}, {.text = "b"}}}, {}),
            " 1  a\n22  b\n");
  EXPECT_EQ(Print(kColumns, {}, {}), "Ticks  Program  Line  Note\n");
  EXPECT_EQ(Print({}, {}, {}), "");
}

TEST(Table, IsSafeOnTerminals) {
  const Rows rows = {{{.text = "1"}, {.text = "a\tb\nc\x1b"}, {.text = "2"}}};
  EXPECT_EQ(Print(kColumns, rows, {.to_terminal = true, .has_color = false, .columns = 80}),
            "Ticks  Program  Line  Note\n"
            "    1  a?b?c?      2\n");
  EXPECT_EQ(Print(kColumns, rows, {}),
            "Ticks  Program  Line  Note\n"
            "    1  a\tb\nc\x1b      2\n");
}

TEST(Table, CutsColumnsThatGiveWay) {
  const Rows rows = {
      {{.text = "1"}, {.text = "a program of some length"}, {.text = "2"}, {.text = "end"}}};
  const auto print = [&rows](std::size_t columns) {
    return Print(kColumns, rows, {.to_terminal = true, .has_color = false, .columns = columns});
  };
  EXPECT_EQ(print(43),
            "Ticks  Program                   Line  Note\n"
            "    1  a program of some length     2  end\n");
  EXPECT_EQ(print(42),
            "Ticks  Program                  Line  Note\n"
            "    1  a program of some le...     2  end\n");
  EXPECT_EQ(print(27),
            "Ticks  Program   Line  Note\n"
            "    1  a pro...     2  end\n");
  // Narrower than its columns can be made.
  EXPECT_EQ(print(20),
            "Ticks  Program   Li>\n"
            "    1  a pro...    >\n");
}

TEST(Table, TakesFromTheWidestColumnFirst) {
  const std::vector<Column> columns = {{.heading = "a", .align = Align::kLeft, .gives_way = true},
                                       {.heading = "b", .align = Align::kLeft, .gives_way = true},
                                       {.heading = "c"}};
  const Rows rows = {
      {{.text = "123456789012"}, {.text = "1234567890123456"}, {.text = "1234567890"}}};
  const auto print = [&](std::size_t width) {
    return Print(columns, rows, {.to_terminal = true, .has_color = false, .columns = width});
  };
  EXPECT_EQ(print(38),
            "a             b             c\n"
            "123456789012  123456789...  1234567890\n");
  EXPECT_EQ(print(36),
            "a            b            c\n"
            "12345678...  12345678...  1234567890\n");
}

TEST(Table, HasStyles) {
  const Rows rows = {{{.text = "1", .style = Style::kHot}, {.text = "a"}}};
  const std::vector<Column> columns = {{.heading = "N"}, {.heading = "P"}};
  EXPECT_EQ(Print(columns, rows, {.to_terminal = false, .has_color = true, .columns = {}}),
            "\x1b[1mN\x1b[0m  \x1b[1mP\x1b[0m\n"
            "\x1b[1;31m1\x1b[0m  a\n");
}

TEST(Table, AsksForEachRowTwice) {
  StringSink sink;
  TextWriter writer(sink, {});
  std::vector<std::size_t> asked;
  const std::vector<Column> columns = {{.heading = ""}};
  PrintTable(writer, columns, 2, [&asked](std::size_t row, std::span<Cell> cells) {
    EXPECT_EQ(cells.size(), 1U);
    EXPECT_EQ(cells[0].text, "");
    asked.push_back(row);
    cells[0].text = std::to_string(row);
  });
  EXPECT_EQ(asked, (std::vector<std::size_t>{0, 1, 0, 1}));
  EXPECT_EQ(sink.Text(), "0\n1\n");
}

}  // namespace

}  // namespace ptick::companion
