#include "figures/program_order.h"

#include <algorithm>
#include <cstdint>
#include <numeric>

#include "figures/running_sum.h"
#include "value/value.h"

namespace ptick {

namespace {

// A total is compared as it would be written: cut to the decimals that the text of a number shows.
Number TotalTicksOf(const OrderedTicks& ticks, std::size_t row) {
  RunningSum sum;
  ticks.ForEach(row, [&](const TickEntry& entry) {
    if (entry.HasExactText()) {
      sum.Add(Value(ticks.ExactTicks(entry)));
    } else {
      sum.Add(std::int64_t{entry.ticks});
    }
  });
  return Value(sum.Total().Text()).AsNumber();
}

std::vector<std::size_t> Rows(const OrderedTicks& ticks) {
  std::vector<std::size_t> rows(ticks.RowCount());
  std::iota(rows.begin(), rows.end(), std::size_t{0});
  return rows;
}

std::vector<std::size_t> OrderByName(const OrderedTicks& ticks) {
  const NameTable& names = ticks.Programs();
  std::vector<std::size_t> order = Rows(ticks);
  std::ranges::sort(order, {},
                    [&names](std::size_t row) { return names[static_cast<NameTable::Id>(row)]; });
  return order;
}

std::vector<std::size_t> OrderByTicks(const OrderedTicks& ticks) {
  std::vector<std::size_t> order = Rows(ticks);
  std::vector<Number> totals(order.size());
  for (const std::size_t row : order) {
    totals[row] = TotalTicksOf(ticks, row);
  }
  const bool ascending = ticks.Order() == SortOrder::kAscending;
  std::ranges::sort(order, [&](std::size_t a, std::size_t b) {
    const int compared = CompareNumbers(totals[a], totals[b]);
    if (compared == 0) {
      return a > b;
    }
    return ascending ? compared < 0 : compared > 0;
  });
  return order;
}

}  // namespace

std::vector<std::size_t> ProgramOrder(const OrderedTicks& ticks, ProgramsBy by) {
  return by == ProgramsBy::kTicks ? OrderByTicks(ticks) : OrderByName(ticks);
}

}  // namespace ptick
