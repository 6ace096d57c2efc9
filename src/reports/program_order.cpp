#include "reports/program_order.h"

#include <algorithm>
#include <numeric>

#include "profile/ticks/sort_order.h"
#include "reports/running_sum.h"

namespace ptick {

namespace {

// A total is compared as it would be written: cut to the decimals that the text of a number shows.
Number TotalTicksOf(const TickTable& details, std::size_t row) {
  RunningSum sum;
  details.ForEach(row, [&](const TickEntry& entry) {
    if (entry.HasExactText()) {
      sum.Add(Value(details.ExactTicks(entry)));
    } else {
      sum.Add(std::int64_t{entry.ticks});
    }
  });
  return Value(sum.Total().Text()).AsNumber();
}

}  // namespace

std::vector<std::size_t> ProgramOrder(const TickTable& details, const RunOptions& options) {
  const NameTable& names = details.Programs();
  std::vector<std::size_t> order(names.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  if (!options.CpuOption) {
    std::ranges::sort(order, {},
                      [&names](std::size_t row) { return names[static_cast<NameTable::Id>(row)]; });
    return order;
  }
  std::vector<Number> totals(names.size());
  for (const std::size_t row : order) {
    totals[row] = TotalTicksOf(details, row);
  }
  const bool ascending = options.TickOrder == SortOrder::kAscending;
  std::ranges::sort(order, [&](std::size_t a, std::size_t b) {
    const int compared = CompareNumbers(totals[a], totals[b]);
    if (compared == 0) {
      return a > b;
    }
    return ascending ? compared < 0 : compared > 0;
  });
  return order;
}

}  // namespace ptick
