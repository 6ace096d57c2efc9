#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "companion/number_text.h"
#include "companion/table.h"
#include "companion/text_writer.h"
#include "ptick_diff/diff_writers.h"
#include "ptick_diff/figure_text.h"
#include "ptick_diff/footnotes.h"
#include "ptick_diff/row_columns.h"

namespace ptick::compare {

namespace {

using companion::Align;
using companion::Cell;
using companion::TextWriter;

std::string Profiles(std::span<const std::string> names) {
  const std::size_t more = names.size() - 1;
  return names.front() + (more == 0 ? "" : " and " + companion::GroupedCount(more) + " more");
}

/// A row of the head.
struct HeadSide {
  const char* name;
  const Side& side;
  std::span<const std::string> profiles;
  Number ticks;
};

void FillHead(const HeadSide& side, const Diff& diff, bool is_new, std::span<Cell> cells) {
  const Comparison& comparison = diff.comparison;
  std::size_t n = 0;
  cells[n++].text = side.name;
  cells[n++].text = companion::GroupedCount(side.side.Runs());
  cells[n++].text = FigureText(side.ticks);
  if (diff.HasDeviations()) {
    cells[n++].text =
        side.side.Runs() > 1 ? FigureText(Number(side.side.Total().Deviation(0))) : "-";
  }
  if (is_new) {
    cells[n].text = ChangeText(comparison.TotalChange());
    cells[n + 1].text = SignedPercentText(comparison.TotalChange(), comparison.OldTotal());
  }
  cells[n + 2].text = Profiles(side.profiles);
}

void PrintHead(const Diff& diff, TextWriter& writer) {
  std::vector<companion::Column> columns = {{.heading = ""},
                                            {.heading = "Runs", .align = Align::kRight}};
  columns.push_back(
      {.heading = diff.HasDeviations() ? "Ticks per run" : "Ticks", .align = Align::kRight});
  if (diff.HasDeviations()) {
    columns.push_back({.heading = "SD", .align = Align::kRight});
  }
  columns.push_back({.heading = "Change", .align = Align::kRight});
  columns.push_back({.heading = "Change %", .align = Align::kRight});
  columns.push_back({.heading = "Profiles", .gives_way = true});
  const Comparison& comparison = diff.comparison;
  const std::array<HeadSide, 2> sides = {
      {{"Old", comparison.OldSide(), diff.old_profiles, comparison.OldTotal()},
       {"New", comparison.NewSide(), diff.new_profiles, comparison.NewTotal()}}};
  PrintTable(writer, columns, sides.size(), [&](std::size_t row, std::span<Cell> cells) {
    FillHead(sides.at(row), diff, row == 1, cells);
  });
}

void PrintRows(const Diff& diff, std::span<const std::uint32_t> rows, bool has_noise,
               TextWriter& writer) {
  const std::vector<RowColumn> columns = RowColumns(diff, has_noise);
  std::vector<companion::Column> headings;
  headings.reserve(columns.size());
  for (const RowColumn& column : columns) {
    headings.push_back(column.column);
  }
  PrintTable(writer, headings, rows.size(), [&](std::size_t row, std::span<Cell> cells) {
    for (std::size_t n = 0; n < columns.size(); ++n) {
      cells[n] = columns[n].cell(diff.RowAt(rows[row]));
    }
  });
}

}  // namespace

void WriteDiffTable(const Diff& diff, const TableOptions& options, companion::ByteSink& sink,
                    const companion::TextForm& form) {
  TextWriter writer(sink, form);
  PrintHead(diff, writer);
  std::vector<std::uint32_t> rows = diff.order;
  if (!options.shows_noise) {
    std::erase_if(rows, [&](std::uint32_t place) { return !diff.RowAt(place).is_significant; });
  }
  const bool has_noise = options.shows_noise && IsSampled(diff.By());
  const std::size_t shown = std::min<std::uint64_t>(options.top, rows.size());
  if (shown > 0) {
    writer.EndLine();
    PrintRows(diff, std::span(rows).first(shown), has_noise, writer);
  }
  writer.EndLine();
  for (const std::string& footnote : Footnotes(diff, rows, shown)) {
    writer.Line(footnote);
  }
}

}  // namespace ptick::compare
