#include "compare/support/comparison_of.h"

#include <algorithm>

#include "support/profiles.h"
#include "value/number_text.h"

namespace ptick::testing {

namespace {

using compare::Row;

void AddRuns(const Runs& runs, compare::Side& side) {
  for (const std::vector<std::string>& run : runs) {
    std::string text;
    for (const std::string& record : run) {
      text += Records({record});
    }
    side.AddRun(*Parse(text, compare::Side::NeededOptions(side.GetKind())).tables);
  }
}

std::string DetailText(const compare::Comparison& comparison, std::uint32_t detail) {
  if (detail == Row::kNone) {
    return "-";
  }
  return comparison.OldSide().GetKind() == compare::Kind::kLine
             ? comparison.Names().LineText(detail)
             : std::string(comparison.Names().Details()[detail]);
}

std::string ValueText(const std::optional<Number>& value) {
  return value ? DecimalText(*value) : "-";
}

std::string RowText(const compare::Comparison& comparison, const Row& row) {
  std::string text(comparison.Names().Names()[row.name]);
  const compare::Kind kind = comparison.OldSide().GetKind();
  if (kind == compare::Kind::kLine || kind == compare::Kind::kSubroutine) {
    const std::string old_detail = DetailText(comparison, row.old_detail);
    const std::string new_detail = DetailText(comparison, row.new_detail);
    text += " " + (old_detail == new_detail ? old_detail : old_detail + ">" + new_detail);
  }
  text += " " + ValueText(comparison.Old(row)) + " " + ValueText(comparison.New(row));
  const std::string change = ValueText(comparison.Change(row));
  text += (change.starts_with('-') ? " " : " +") + change;
  return text + (row.is_significant ? "" : "~");
}

}  // namespace

Sides::Sides(compare::Kind kind, const Runs& old_runs, const Runs& new_runs)
    : old_side(kind, names), new_side(kind, names) {
  AddRuns(old_runs, old_side);
  AddRuns(new_runs, new_side);
}

std::vector<std::string> Traces(const std::vector<std::string>& entries) {
  std::vector<std::string> records;
  for (const std::string& entry : entries) {
    std::string record = "trace|" + entry;
    std::ranges::replace(record, ' ', '|');
    records.push_back(record);
  }
  return records;
}

std::vector<std::string> RowTexts(const compare::Comparison& comparison, compare::SortBy by) {
  std::vector<std::string> texts;
  for (const std::uint32_t row : OrderRows(comparison, by)) {
    texts.push_back(RowText(comparison, comparison.Rows()[row]));
  }
  return texts;
}

}  // namespace ptick::testing
