#include <cstddef>

#include "model/model_reports.h"
#include "value/arithmetic.h"
#include "value/mask.h"

namespace ptick::model {

namespace {

constexpr std::string_view kRule = "----------------------";
constexpr std::string_view kLongRule = "-----------------------------";

std::string Columns(const Value& name, const Value& line, const Value& ticks,
                    const Value& percent) {
  return Fmt(name, "L#20") + " " + Fmt(line, "L#6") + " " + Fmt(ticks, "L#8") + " " +
         Fmt(percent, "L#6");
}

/// Two-decimal figures are summed as whole hundredths.
struct Subtotal {
  Value ticks = 0;
  Value hundredths = 0;
};

Subtotal PrintProgramRows(const ModelTables& tables, std::int64_t row,
                          std::vector<std::string>& lines) {
  const DetailsRow& details = tables.Details.at(static_cast<std::size_t>(row - 1));
  Subtotal subtotal;
  std::string previous;
  for (std::size_t i = 0; i < details.ticks.size(); ++i) {
    const Value& ticks = details.ticks[i];
    subtotal.ticks = Add(subtotal.ticks, ticks);
    const std::string name = details.programs[i].Text();
    const std::string shown = name == previous ? "" : name;
    previous = name;
    const Value hundredths = Int(Divide(Multiply(ticks, 10000), tables.headers.at("ticks")));
    subtotal.hundredths = Add(subtotal.hundredths, hundredths);
    lines.push_back(Columns(shown, details.lines[i], ticks, Divide(hundredths, 100)));
  }
  return subtotal;
}

// Names in ascending order, as a mark-delimited list sorts them.
std::vector<std::string> SortedNames(const ValueList& names) {
  std::string list;
  for (const Value& name : names) {
    list += name.Text() + kFieldMark;
  }
  list = Sort(list.substr(0, list.size() - (names.empty() ? 0 : 1)));
  std::vector<std::string> sorted;
  for (std::size_t i = 1; i <= names.size(); ++i) {
    sorted.push_back(Extract(list, {static_cast<std::int64_t>(i)}));
  }
  return sorted;
}

// A total is a text like any element of a list: what is located is what would be written.
std::vector<std::string> NamesByTotal(const ModelTables& tables, LocateOrder order) {
  ValueList names;
  ValueList totals;
  for (std::size_t i = 0; i < tables.program_names.size(); ++i) {
    Value total = 0;
    for (const Value& ticks : tables.Details[i].ticks) {
      total = Add(total, ticks);
    }
    total = total.Text();
    const std::int64_t position = LocateIn(total, totals, order).position;
    InsertAt(totals, position, total);
    InsertAt(names, position, tables.program_names[i]);
  }
  std::vector<std::string> ordered;
  for (const Value& name : names) {
    ordered.push_back(name.Text());
  }
  return ordered;
}

}  // namespace

std::vector<std::int64_t> ModelProgramOrder(const ModelTables& tables, const RunOptions& options) {
  const std::vector<std::string> names =
      options.CpuOption ? NamesByTotal(tables, LocateOrderOf(options.TickOrder))
                        : SortedNames(tables.program_names);
  std::vector<std::int64_t> rows;
  rows.reserve(names.size());
  for (const std::string& name : names) {
    rows.push_back(LocateIn(name, tables.program_names, LocateOrder::kNone).position);
  }
  return rows;
}

std::vector<std::string> ModelLineReport(const ModelTables& tables, const RunOptions& options) {
  std::vector<std::string> lines;
  if (!options.PerProgram) {
    PrintProgramRows(tables, 1, lines);
    return lines;
  }
  for (const std::int64_t row : ModelProgramOrder(tables, options)) {
    const Subtotal subtotal = PrintProgramRows(tables, row, lines);
    lines.push_back(Columns("", "", kRule, kLongRule));
    lines.push_back(Columns("", "", subtotal.ticks, Divide(subtotal.hundredths, 100)));
    lines.emplace_back();
  }
  return lines;
}

}  // namespace ptick::model
