#include "companion/text_form.h"

#include <gtest/gtest.h>

#include <optional>
#include <set>
#include <string_view>
#include <vector>

namespace ptick::companion {

namespace {

TEST(TextForm, HasColorWhereItIsWanted) {
  struct Row {
    ColorWhen when;
    ColorSigns signs;
    bool want;
  };
  const std::vector<Row> rows = {
      {ColorWhen::kAuto, {.to_terminal = true, .no_color = nullptr, .term = "xterm"}, true},
      {ColorWhen::kAuto, {.to_terminal = false, .no_color = nullptr, .term = "xterm"}, false},
      {ColorWhen::kAuto, {.to_terminal = true, .no_color = "1", .term = "xterm"}, false},
      {ColorWhen::kAuto, {.to_terminal = true, .no_color = "0", .term = "xterm"}, false},
      {ColorWhen::kAuto, {.to_terminal = true, .no_color = "", .term = "xterm"}, true},
      {ColorWhen::kAuto, {.to_terminal = true, .no_color = nullptr, .term = "dumb"}, false},
      {ColorWhen::kAuto, {.to_terminal = true, .no_color = nullptr, .term = ""}, false},
      {ColorWhen::kAuto, {.to_terminal = true, .no_color = nullptr, .term = nullptr}, false},
      {ColorWhen::kAlways, {.to_terminal = false, .no_color = "1", .term = "dumb"}, true},
      {ColorWhen::kNever, {.to_terminal = true, .no_color = nullptr, .term = "xterm"}, false},
  };
  for (std::size_t i = 0; i < rows.size(); ++i) {
    EXPECT_EQ(UsesColor(rows[i].when, rows[i].signs), rows[i].want) << "row " << i;
  }
}

TEST(TextForm, HasTheColumnsOfTheTerminal) {
  struct Row {
    const char* columns;
    std::optional<std::size_t> terminal;
    std::size_t want;
  };
  const std::vector<Row> rows = {
      {nullptr, 120, 120}, {nullptr, 0, 80},  {nullptr, std::nullopt, 80},
      {"100", 120, 100},   {"1", 120, 1},     {"32767", 120, 32767},
      {"32768", 120, 120}, {"0", 120, 120},   {"", 120, 120},
      {"-5", 120, 120},    {"+5", 120, 120},  {" 50", 120, 120},
      {"50 ", 120, 120},   {"50x", 120, 120}, {"99999999999999999999999", 120, 120},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(TerminalColumns(row.columns, row.terminal), row.want)
        << (row.columns == nullptr ? "not set" : row.columns);
  }
}

TEST(TextForm, HasASequenceForEachStyle) {
  EXPECT_EQ(StyleSequence(Style::kPlain), "");
  std::set<std::string_view> sequences;
  for (const Style style : {Style::kHeading, Style::kHot, Style::kWarm, Style::kFaint,
                            Style::kAdded, Style::kRemoved}) {
    const std::string_view sequence = StyleSequence(style);
    EXPECT_TRUE(sequence.starts_with("\x1b[") && sequence.ends_with('m')) << sequence.substr(1);
    sequences.insert(sequence);
  }
  EXPECT_EQ(sequences.size(), 6U);
}

}  // namespace

}  // namespace ptick::companion
