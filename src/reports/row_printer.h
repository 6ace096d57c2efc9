#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "profile/ticks/tick_span.h"
#include "reports/row_layout.h"
#include "reports/source_texts.h"
#include "value/value.h"

namespace ptick {

/// Prints rows of the per-line report where lines are printed: to an Output or to a LineBlock. A
/// copy, for another thread, shares what does not change, and no cache line with what does.
class alignas(64) RowPrinter {
 public:
  /// `sources` is null where no source text is shown.
  RowPrinter(RowLayout layout, const SourceTexts* sources)
      : layout_(std::move(layout)), sources_(sources) {}

  RowLayout& Layout() { return layout_; }

  /// A row for every entry.
  template <typename Lines>
  void PrintRows(const TickSpan& entries, Lines& lines) {
    const auto print = [this, &lines](const TickEntry& entry) { PrintRow(entry, lines); };
    const auto print_with_source = [this, &lines](const TickEntry& entry) {
      PrintSourceRow(entry, lines);
    };
    if (sources_ == nullptr) {
      entries.ForEach(print);
    } else {
      entries.ForEach(print_with_source);
    }
  }

 private:
  template <typename Lines>
  void PrintRow(const TickEntry& entry, Lines& lines) {
    char* const row = lines.LineRoom(kRowWidth);
    layout_.LayOut(entry, row);
    lines.EndLineAt(row + kRowWidth);
  }

  template <typename Lines>
  void PrintSourceRow(const TickEntry& entry, Lines& lines) {
    const std::string_view text = sources_->TextOf(entry);
    char* const row = lines.LineRoom(kRowWidth + 1 + text.size());
    layout_.LayOut(entry, row);
    row[kRowWidth] = ' ';
    lines.EndLineAt(std::copy(text.begin(), text.end(), row + kRowWidth + 1));
  }

  RowLayout layout_;
  const SourceTexts* sources_;
};

/// The subtotal of a program, after its rows.
template <typename Lines>
void PrintSubtotal(const Value& ticks, const Value& percent, Lines& lines) {
  constexpr std::string_view kDashes = "--------";
  lines.PrintLine(LayOutColumns("", "", kDashes, kDashes));
  lines.PrintLine(LayOutColumns("", "", ticks.Text(), percent.Text()));
  lines.PrintLine("");
}

}  // namespace ptick
