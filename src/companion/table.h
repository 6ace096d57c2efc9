// Tables for people: columns aligned by what their texts take on a terminal.
#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "companion/text_form.h"
#include "companion/text_writer.h"

namespace ptick::companion {

enum class Align { kLeft, kRight };

struct Column {
  std::string heading;
  Align align = Align::kLeft;
  /// Whether its texts are cut where the table is wider than the terminal.
  bool gives_way = false;
};

struct Cell {
  /// Bytes of any kind.
  std::string text;
  Style style = Style::kPlain;
};

/// Fills the cells of a row, which are empty before. It is asked for each row twice, once to learn
/// the widths and once to print it, so that no row needs to be kept.
using FillRow = std::function<void(std::size_t row, std::span<Cell> cells)>;

/// Prints the headings, if any column has one, and the rows, two blanks between columns. Where
/// lines are cut, columns that give way are cut first, the widest first, down to their headings or
/// eight columns.
void PrintTable(TextWriter& writer, std::span<const Column> columns, std::size_t rows,
                const FillRow& fill);

}  // namespace ptick::companion
