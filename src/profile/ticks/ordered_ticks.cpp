#include "profile/ticks/ordered_ticks.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace ptick {

OrderedTicks::OrderedTicks(TickTable&& table, SortOrder order, bool per_program)
    : table_(std::move(table)),
      order_(order),
      per_program_(per_program),
      large_(table_.large_.TakeOrdered(order)) {
  OrderIrregular();
  if (per_program) {
    MakeRows();
  }
}

// Whether ticks a come before ticks b.
bool OrderedTicks::Precedes(const Number& a, const Number& b, SortOrder order) {
  const int compared = CompareNumbers(a, b);
  return order == SortOrder::kAscending ? compared < 0 : compared > 0;
}

void OrderedTicks::OrderIrregular() {
  std::ranges::reverse(table_.irregular_);
  std::ranges::stable_sort(table_.irregular_, [this](const TickTable::IrregularEntry& a,
                                                     const TickTable::IrregularEntry& b) {
    return Precedes(a.ticks, b.ticks, order_);
  });
}

// One counting sort by program, over entries that are in their order already.
void OrderedTicks::MakeRows() {
  std::vector<std::size_t> places(Programs().size() + 1);
  ForEachOfAll([&places](const TickEntry& entry) { ++places[entry.program + 1]; });
  std::partial_sum(places.begin(), places.end(), places.begin());
  row_starts_ = places;
  rows_ = TickEntryBlock(places.back());
  TickEntry* const rows = rows_.Entries().data();
  ForEachOfAll([&places, rows](const TickEntry& entry) { rows[places[entry.program]++] = entry; });
}

}  // namespace ptick
