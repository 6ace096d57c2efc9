#include "ptick_diff/gate_messages.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <optional>

#include "companion/number_text.h"
#include "compare/as_double.h"
#include "compare/gates.h"
#include "ptick_diff/figure_text.h"

namespace ptick::compare {

namespace {

constexpr std::size_t kNamedRows = 10;

std::string Total(const Comparison& comparison, const Value& percent) {
  const Number old_total = comparison.OldTotal();
  const std::string growth =
      AsDouble(old_total) == 0
          ? ""
          : fmt::format(" by {} %", PercentText(comparison.TotalChange(), old_total));
  return fmt::format("the total grew{}, from {} to {} ticks per run: more than {} %", growth,
                     FigureText(old_total), FigureText(comparison.NewTotal()), percent.Text());
}

std::string RowName(const Diff& diff, const Row& row) {
  const KeyNames& names = diff.comparison.Names();
  const std::string name(names.Names()[row.name]);
  return diff.By() == Kind::kLine ? fmt::format("{} line {}", name, names.LineText(row.new_detail))
                                  : name;
}

std::string SlowerRow(const Diff& diff, const Row& row, const Value& percent) {
  const Comparison& comparison = diff.comparison;
  const Number nothing = std::int64_t{0};
  return fmt::format(
      "{} grew by {} % of the old total, from {} to {} ticks per run: more than {} %",
      RowName(diff, row), PercentText(comparison.Change(row), comparison.OldTotal()),
      FigureText(comparison.Old(row).value_or(nothing)),
      FigureText(comparison.New(row).value_or(nothing)), percent.Text());
}

}  // namespace

std::vector<std::string> GateMessages(const Diff& diff, const DiffOptions& options) {
  std::vector<std::string> messages;
  if (options.fail_slower && IsTotalSlower(diff.comparison, *options.fail_slower)) {
    messages.push_back(Total(diff.comparison, *options.fail_slower));
  }
  if (options.fail_slower_row) {
    const std::vector<std::uint32_t> rows =
        SlowerRows(diff.comparison, diff.order, *options.fail_slower_row);
    for (std::size_t n = 0; n < std::min(rows.size(), kNamedRows); ++n) {
      messages.push_back(SlowerRow(diff, diff.RowAt(rows[n]), *options.fail_slower_row));
    }
    if (rows.size() > kNamedRows) {
      messages.push_back(fmt::format("{} more row{} grew by more than {} % of the old total",
                                     companion::GroupedCount(rows.size() - kNamedRows),
                                     rows.size() == kNamedRows + 1 ? "" : "s",
                                     options.fail_slower_row->Text()));
    }
  }
  return messages;
}

}  // namespace ptick::compare
