// Nearly all counts are small whole numbers: they are counted, and each call put to its place.
// Larger ones are sorted by digits, and those that are no whole numbers, which are few and equal
// none of the others, merged in.

#include "figures/subroutine_order.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <span>

#include "profile/ticks/regular_count.h"
#include "profile/ticks/sort_order.h"
#include "profile/ticks/tick_entries.h"

namespace ptick {

namespace {

constexpr std::uint32_t kSmallCounts = 4096;

/// Calls without a whole count.
struct OddCall {
  Number times;
  std::uint32_t call;
};

std::optional<std::uint32_t> CountOf(const SubroutineTable& subroutines, std::uint32_t call) {
  const std::optional<std::uint32_t> times = subroutines.WholeTimes(call);
  return times ? times : RegularCount(subroutines.Times(call));
}

std::vector<std::uint32_t> MergeOdd(const SubroutineTable& subroutines,
                                    const std::vector<std::uint32_t>& order,
                                    std::vector<OddCall> odd) {
  std::ranges::reverse(odd);
  std::ranges::stable_sort(
      odd, [](const OddCall& a, const OddCall& b) { return CompareNumbers(a.times, b.times) > 0; });
  std::vector<std::uint32_t> merged;
  merged.reserve(order.size() + odd.size());
  auto next = odd.cbegin();
  for (const std::uint32_t call : order) {
    for (; next != odd.cend() && CompareNumbers(next->times, subroutines.Times(call)) > 0; ++next) {
      merged.push_back(next->call);
    }
    merged.push_back(call);
  }
  std::transform(next, odd.cend(), std::back_inserter(merged),
                 [](const OddCall& call) { return call.call; });
  return merged;
}

}  // namespace

std::vector<std::uint32_t> SubroutineOrder(const SubroutineTable& subroutines) {
  const auto calls = static_cast<std::uint32_t>(subroutines.Count());
  std::array<std::uint32_t, kSmallCounts> ends{};  // first how many there are of each small count
  TickEntries large;
  std::vector<OddCall> odd;
  for (std::uint32_t call = 0; call < calls; ++call) {
    const std::optional<std::uint32_t> count = CountOf(subroutines, call);
    if (!count) {
      odd.push_back({subroutines.Times(call), call});
    } else if (*count < kSmallCounts) {
      ++ends[*count];
    } else {
      large.Add({0, call, *count});
    }
  }
  const TickEntryBlock ordered = large.TakeOrdered(SortOrder::kDescending);
  const std::span<const TickEntry> large_calls = ordered.Entries();
  std::vector<std::uint32_t> order(calls - odd.size());
  std::ranges::transform(large_calls, order.begin(), &TickEntry::line);
  auto end = static_cast<std::uint32_t>(large_calls.size());
  for (std::uint32_t count = kSmallCounts; count-- > 0;) {
    end = ends[count] += end;
  }
  for (std::uint32_t call = 0; call < calls; ++call) {
    const std::optional<std::uint32_t> count = CountOf(subroutines, call);
    if (count && *count < kSmallCounts) {
      order[--ends[*count]] = call;
    }
  }
  return odd.empty() ? order : MergeOdd(subroutines, order, std::move(odd));
}

}  // namespace ptick
