#include "profile/ticks/ordered_ticks.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "parallel/piece_work.h"

namespace ptick {

namespace {

/// So many groups per thread of entries that are put into rows: they are of one size, but threads
/// are not always equally fast.
constexpr std::size_t kGroupsPerThread = 4;

// Entries in their order, cut into groups of about `group_size` entries.
std::vector<EntryGroup> CutIntoGroups(const OrderedTicks& ticks, std::size_t group_size,
                                      std::size_t programs) {
  std::vector<EntryGroup> groups;
  std::size_t room = 0;
  const auto put = [&](TickSpan entries) {
    while (entries.size() > 0) {
      if (room == 0) {
        groups.push_back({{}, std::vector<std::size_t>(programs)});
        room = group_size;
      }
      const TickSpan taken = entries.TakeFirst(std::min(room, entries.size()));
      groups.back().entries.push_back(taken);
      room -= taken.size();
    }
  };
  for (OrderedTicks::Walk walk(ticks); walk.NextSpans(put);) {
  }
  return groups;
}

// Turns the numbers of each group's entries by program into the places of the first ones. Returns
// the places of the programs, and after them the end.
std::vector<std::size_t> CountsToPlaces(std::vector<EntryGroup>& groups, std::size_t programs) {
  std::vector<std::size_t> starts;
  std::size_t place = 0;
  for (std::size_t program = 0; program < programs; ++program) {
    starts.push_back(place);
    for (EntryGroup& group : groups) {
      place += std::exchange(group.places[program], place);
    }
  }
  starts.push_back(place);
  return starts;
}

}  // namespace

OrderedTicks::OrderedTicks(TickTable&& table, SortOrder order, bool per_program,
                           const ThreadPlan& threads)
    : table_(std::move(table)),
      order_(order),
      per_program_(per_program),
      large_(table_.large_.TakeOrdered(order)) {
  OrderIrregular();
  if (per_program) {
    MakeRows(threads);
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

// One counting sort by program, over entries that are in their order already. Groups of entries can
// be counted, and put into their places, by several threads, but each takes memory for all
// programs.
void OrderedTicks::MakeRows(const ThreadPlan& threads) {
  const std::size_t count =
      table_.CountSmall() + large_.Entries().size() + table_.irregular_.size();
  const std::size_t groups = kGroupsPerThread * threads.threads;
  rows_ = TickEntryBlock(count);
  if (threads.threads > 1 && count > threads.rows_alone && groups * Programs().size() < count / 8) {
    PutIntoRows(CutIntoGroups(*this, count / groups + 1, Programs().size()), threads.threads);
  } else {
    PutIntoRows();
  }
}

void OrderedTicks::PutIntoRows() {
  std::vector<std::size_t> places(Programs().size() + 1);
  ForEachOfAll([&places](const TickEntry& entry) { ++places[entry.program + 1]; });
  std::partial_sum(places.begin(), places.end(), places.begin());
  row_starts_ = places;
  TickEntry* const rows = rows_.Entries().data();
  ForEachOfAll([&places, rows](const TickEntry& entry) { rows[places[entry.program]++] = entry; });
}

void OrderedTicks::PutIntoRows(std::vector<EntryGroup> groups, unsigned threads) {
  DoEach(groups.size(), threads, [&groups](std::size_t n) {
    const auto count = [places = groups[n].places.data()](const TickEntry& entry) {
      ++places[entry.program];
    };
    groups[n].ForEach(count);
  });
  row_starts_ = CountsToPlaces(groups, Programs().size());
  TickEntry* const rows = rows_.Entries().data();
  DoEach(groups.size(), threads, [&groups, rows](std::size_t n) {
    const auto put = [places = groups[n].places.data(), rows](const TickEntry& entry) {
      rows[places[entry.program]++] = entry;
    };
    groups[n].ForEach(put);
  });
}

}  // namespace ptick
