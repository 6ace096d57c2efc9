#include "companion/table.h"

#include <algorithm>
#include <numeric>

#include "companion/display_width.h"

namespace ptick::companion {

namespace {

constexpr std::size_t kGap = 2;
constexpr std::size_t kMinWidth = 8;

class TablePrinter {
 public:
  TablePrinter(TextWriter& writer, std::span<const Column> columns)
      : writer_(writer), columns_(columns), cells_(columns.size()), widths_(columns.size()) {}

  void Print(std::size_t rows, const FillRow& fill) {
    FillHeadings();
    Widen();
    for (std::size_t row = 0; row < rows; ++row) {
      Fill(row, fill);
      Widen();
    }
    if (writer_.Form().columns) {
      Narrow(*writer_.Form().columns);
    }
    if (HasHeadings()) {
      FillHeadings();
      PrintCells();
    }
    for (std::size_t row = 0; row < rows; ++row) {
      Fill(row, fill);
      PrintCells();
    }
  }

 private:
  bool HasHeadings() const {
    return std::any_of(columns_.begin(), columns_.end(),
                       [](const Column& column) { return !column.heading.empty(); });
  }

  void FillHeadings() {
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      cells_[i] = {.text = columns_[i].heading, .style = Style::kHeading};
    }
  }

  void Fill(std::size_t row, const FillRow& fill) {
    for (Cell& cell : cells_) {
      cell.text.clear();
      cell.style = Style::kPlain;
    }
    fill(row, cells_);
  }

  std::string Shown(const Cell& cell) const { return writer_.Shown(cell.text, TextPlace::kCell); }

  void Widen() {
    for (std::size_t i = 0; i < cells_.size(); ++i) {
      widths_[i] = std::max(widths_[i], DisplayWidth(Shown(cells_[i])));
    }
  }

  // Takes from the widest column that gives way, one column of the terminal after the other.
  void Narrow(std::size_t room) {
    std::size_t all = std::accumulate(widths_.begin(), widths_.end(), std::size_t{0});
    all += kGap * (columns_.empty() ? 0 : columns_.size() - 1);
    while (all > room) {
      std::size_t* widest = nullptr;
      for (std::size_t i = 0; i < widths_.size(); ++i) {
        const std::size_t least = std::max(kMinWidth, DisplayWidth(columns_[i].heading));
        if (columns_[i].gives_way && widths_[i] > least &&
            (widest == nullptr || widths_[i] > *widest)) {
          widest = &widths_[i];
        }
      }
      if (widest == nullptr) {
        return;
      }
      --*widest;
      --all;
    }
  }

  // Blanks wait for a text, so that no line ends in them.
  void PrintCells() {
    std::size_t blanks = 0;
    for (std::size_t i = 0; i < cells_.size(); ++i) {
      const std::string text = CutToWidth(Shown(cells_[i]), widths_[i]);
      const std::size_t padding = widths_[i] - DisplayWidth(text);
      const bool is_right = columns_[i].align == Align::kRight;
      blanks += is_right ? padding : 0;
      if (!text.empty()) {
        writer_.Blanks(blanks).Add(text, cells_[i].style);
        blanks = 0;
      }
      blanks += (is_right ? 0 : padding) + kGap;
    }
    writer_.EndLine();
  }

  TextWriter& writer_;
  std::span<const Column> columns_;
  std::vector<Cell> cells_;
  std::vector<std::size_t> widths_;
};

}  // namespace

void PrintTable(TextWriter& writer, std::span<const Column> columns, std::size_t rows,
                const FillRow& fill) {
  TablePrinter(writer, columns).Print(rows, fill);
}

}  // namespace ptick::companion
