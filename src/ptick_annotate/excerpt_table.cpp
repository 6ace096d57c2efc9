#include "ptick_annotate/excerpt_table.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "companion/number_text.h"
#include "companion/table.h"

namespace ptick::companion {

namespace {

constexpr std::size_t kTabStop = 8;

/// A row of the table: a line that is shown, or the lines that are not shown before it.
struct Row {
  std::size_t shown;           ///< which of the lines shown
  std::uint32_t left_out = 0;  ///< how many lines are not; 0 for a line that is
};

std::vector<Row> RowsOf(const SourceExcerpt& excerpt) {
  std::vector<Row> rows;
  std::uint32_t next = 1;
  for (std::size_t n = 0; n < excerpt.Lines().size(); ++n) {
    const std::uint32_t line = excerpt.Lines()[n];
    if (line > next) {
      rows.push_back({.shown = n, .left_out = line - next});
    }
    rows.push_back({.shown = n});
    next = line + 1;
  }
  if (next <= excerpt.SourceLines()) {
    rows.push_back({.shown = 0, .left_out = excerpt.SourceLines() - next + 1});
  }
  return rows;
}

// Where the columns are of a text that a terminal shows; a tab stop for every eight characters.
std::string WithoutTabs(std::string_view text) {
  std::string blanks;
  std::size_t column = 0;
  for (const char c : text) {
    if (c == '\t') {
      const std::size_t width = kTabStop - column % kTabStop;
      blanks.append(width, ' ');
      column += width;
      continue;
    }
    blanks += c;
    const bool continues_character = (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
    column += continues_character ? 0 : 1;
  }
  return blanks;
}

}  // namespace

void PrintExcerpt(const SourceExcerpt& excerpt, std::span<const LineTicks> ticks,
                  const Shares& shares, TextWriter& writer) {
  const std::array<Column, 4> columns = {{{.heading = "Ticks", .align = Align::kRight},
                                          {.heading = "%", .align = Align::kRight},
                                          {.heading = "Line", .align = Align::kRight},
                                          {.heading = "Source", .gives_way = true}}};
  const std::vector<Row> rows = RowsOf(excerpt);
  const bool to_terminal = writer.Form().to_terminal;
  PrintTable(writer, columns, rows.size(), [&](std::size_t row, std::span<Cell> cells) {
    const auto [shown, left_out] = rows[row];
    if (left_out != 0) {
      cells[2] = {.text = "...", .style = Style::kFaint};
      cells[3] = {.text = "(" + GroupedCount(left_out) + (left_out == 1 ? " line)" : " lines)"),
                  .style = Style::kFaint};
      return;
    }
    const std::uint32_t line = excerpt.Lines()[shown];
    const std::string_view text = excerpt.TextOf(shown);
    Style style = Style::kPlain;
    const auto own = std::ranges::lower_bound(ticks, line, {}, &LineTicks::line);
    if (own != ticks.end() && own->line == line) {
      style = shares.StyleOf(own->ticks);
      cells[0] = {.text = own->ticks.Text(), .style = style};
      cells[1] = {.text = shares.Of(own->ticks), .style = style};
    }
    cells[2] = {.text = std::to_string(line), .style = style};
    cells[3] = {.text = to_terminal ? WithoutTabs(text) : std::string(text), .style = style};
  });
}

}  // namespace ptick::companion
