#include "ptick_diff/row_columns.h"

#include <optional>
#include <string>
#include <utility>

#include "compare/as_double.h"
#include "figures/running_sum.h"
#include "ptick_diff/counters.h"
#include "ptick_diff/figure_text.h"
#include "value/arithmetic.h"

namespace ptick::compare {

namespace {

using companion::Align;
using companion::Cell;
using companion::Style;

std::optional<Number> Known(const std::optional<double>& number) {
  return number ? std::optional<Number>(*number) : std::nullopt;
}

Style StyleOf(const Row& row, const Number& change) {
  if (!row.is_significant) {
    return Style::kFaint;
  }
  return AsDouble(change) > 0 ? Style::kHot : Style::kAdded;
}

// What the shares of new values are of, as the values are: nothing where they add up to nothing
// that means anything.
std::optional<Number> WholeOfNew(const Diff& diff) {
  const Comparison& comparison = diff.comparison;
  switch (diff.By()) {
    case Kind::kCounter:
      return std::nullopt;
    case Kind::kSubroutine: {
      const Side& side = comparison.NewSide();
      RunningSum calls;
      for (KeyTable::Id id = 0; id < side.Keys().size(); ++id) {
        calls.Add(Value(side.Values().Sum(id)));
      }
      return Multiply(Factor::PerRun(side.Runs()).Times(calls.Total().AsNumber()),
                      comparison.Scale())
          .AsNumber();
    }
    case Kind::kLine:
    case Kind::kProgram:
    case Kind::kCommand:
      break;
  }
  return diff.is_normalized ? comparison.OldTotal() : comparison.NewTotal();
}

class Columns {
 public:
  Columns(const Diff& diff, bool has_noise)
      : diff_(diff), comparison_(diff.comparison), has_noise_(has_noise) {}

  std::vector<RowColumn> Make() {
    if (diff_.By() == Kind::kCommand) {
      AddFigure("Old times", "New times", CommandFigure::kTimes);
      AddFigure("Old s", "New s", CommandFigure::kElapsed);
      AddFigure("Old CPU s", "New CPU s", CommandFigure::kCpu);
    }
    AddValues();
    AddChange();
    AddShare();
    AddNames();
    return std::move(columns_);
  }

 private:
  using Text = std::function<std::string(const Row&)>;

  void Add(const char* heading, Align align, std::function<Cell(const Row&)> cell) {
    RowColumn& added = columns_.emplace_back();
    added.column.heading = heading;
    added.column.align = align;
    added.column.gives_way = align == Align::kLeft;
    added.cell = std::move(cell);
  }
  void AddTexts(const char* heading, Align align, Text text) {
    Add(heading, align, [text = std::move(text)](const Row& row) {
      return Cell{.text = text(row), .style = Style::kPlain};
    });
  }
  void AddNumber(const char* heading, Text text) {
    AddTexts(heading, Align::kRight, std::move(text));
  }
  void AddText(const char* heading, Text text) { AddTexts(heading, Align::kLeft, std::move(text)); }

  void AddFigure(const char* old_heading, const char* new_heading, CommandFigure figure) {
    AddNumber(old_heading, [comparison = &comparison_, figure](const Row& row) {
      return FigureText(comparison->OldFigure(row, figure));
    });
    AddNumber(new_heading, [comparison = &comparison_, figure](const Row& row) {
      return FigureText(comparison->NewFigure(row, figure));
    });
  }

  void AddValues();
  void AddChange();
  void AddShare();
  void AddNames();
  void AddLines();

  const Diff& diff_;
  const Comparison& comparison_;
  bool has_noise_;
  std::vector<RowColumn> columns_;
};

void Columns::AddValues() {
  const Comparison& comparison = comparison_;
  const bool is_command = diff_.By() == Kind::kCommand;
  AddNumber(is_command ? "Old ticks" : "Old",
            [&comparison](const Row& row) { return FigureText(comparison.Old(row)); });
  if (comparison.OldSide().Runs() > 1) {
    AddNumber("SD", [&comparison](const Row& row) {
      return FigureText(Known(comparison.OldDeviation(row)));
    });
  }
  AddNumber(is_command ? "New ticks" : "New",
            [&comparison](const Row& row) { return FigureText(comparison.New(row)); });
  if (comparison.NewSide().Runs() > 1) {
    AddNumber("SD", [&comparison](const Row& row) {
      return FigureText(Known(comparison.NewDeviation(row)));
    });
  }
}

void Columns::AddChange() {
  const Comparison& comparison = comparison_;
  Add("Change", Align::kRight, [&comparison](const Row& row) {
    const Number change = comparison.Change(row);
    return Cell{.text = ChangeText(change), .style = StyleOf(row, change)};
  });
  if (has_noise_) {
    AddNumber("", [](const Row& row) { return row.is_significant ? "" : "~"; });
  }
  AddNumber("Change %", [&comparison](const Row& row) -> std::string {
    const std::optional<Number> old_value = comparison.Old(row);
    return old_value ? SignedPercentText(comparison.Change(row), *old_value) : "new";
  });
}

void Columns::AddShare() {
  const std::optional<Number> whole = WholeOfNew(diff_);
  if (whole) {
    AddNumber("% of new", [&comparison = comparison_, whole = *whole](const Row& row) {
      const std::optional<Number> value = comparison.New(row);
      return value ? PercentText(*value, whole) : "-";
    });
  }
}

void Columns::AddNames() {
  const KeyNames& names = comparison_.Names();
  const auto name = [&names](const Row& row) { return std::string(names.Names()[row.name]); };
  switch (diff_.By()) {
    case Kind::kLine:
      AddText("Program", name);
      AddLines();
      break;
    case Kind::kProgram:
      AddText("Program", name);
      break;
    case Kind::kCommand:
      AddText("Command", name);
      break;
    case Kind::kSubroutine:
      AddText("Caller", name);
      AddText("Subroutine",
              [&names](const Row& row) { return std::string(names.Details()[row.new_detail]); });
      break;
    case Kind::kCounter:
      AddText("Counter", name);
      AddText("Unit", [name](const Row& row) { return std::string(UnitOf(name(row))); });
      break;
  }
}

void Columns::AddLines() {
  const KeyNames& names = comparison_.Names();
  const auto line_text = [&names](std::uint32_t line) {
    return line == Row::kNone ? std::string("-") : names.LineText(line);
  };
  AddText("Line", [line_text](const Row& row) { return line_text(row.new_detail); });
  if (diff_.has_sources) {
    AddText("Old line", [line_text](const Row& row) { return line_text(row.old_detail); });
  }
}

}  // namespace

std::vector<RowColumn> RowColumns(const Diff& diff, bool has_noise) {
  return Columns(diff, has_noise).Make();
}

}  // namespace ptick::compare
