// Collecting a million trace entries and ordering them by ticks; of 2,000 programs, by program
// first.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "generator/random.h"
#include "profile/ticks/ordered_ticks.h"

namespace ptick::bench {

namespace {

std::vector<TickEntry> RandomEntries(std::uint32_t programs) {
  constexpr std::size_t kEntries = 1'000'000;
  Random random(1);
  std::vector<TickEntry> entries(kEntries);
  for (TickEntry& entry : entries) {
    entry = {random.Below(programs), random.Below(5000), random.Zipf()};
  }
  return entries;
}

void CountEntries(benchmark::State& state, const std::vector<TickEntry>& entries) {
  state.SetItemsProcessed(static_cast<std::int64_t>(entries.size()) * state.iterations());
}

void OrderEntries(benchmark::State& state) {
  const auto programs = static_cast<std::uint32_t>(state.range(0));
  const std::vector<TickEntry> arrivals = RandomEntries(programs);
  for (auto _ : state) {
    TickTable table;
    for (std::uint32_t program = 0; program < programs; ++program) {
      table.Programs().Intern(std::to_string(program));
    }
    for (const TickEntry& entry : arrivals) {
      table.Add(entry.program, entry.line, entry.ticks);
    }
    const OrderedTicks ticks(std::move(table), SortOrder::kDescending, programs > 1);
    benchmark::DoNotOptimize(ticks);
  }
  CountEntries(state, arrivals);
}
BENCHMARK(OrderEntries)
    ->Name("ordering/TickTable")
    ->Arg(1)
    ->Arg(2000)
    ->Unit(benchmark::kMillisecond);

void SortEntries(benchmark::State& state) {
  const std::vector<TickEntry> arrivals = RandomEntries(static_cast<std::uint32_t>(state.range(0)));
  for (auto _ : state) {
    std::vector<TickEntry> entries;
    entries.reserve(arrivals.size());
    for (const TickEntry& entry : arrivals) {
      entries.push_back(entry);
    }
    std::reverse(entries.begin(), entries.end());
    std::stable_sort(entries.begin(), entries.end(), [](const TickEntry& a, const TickEntry& b) {
      return std::tie(a.program, b.ticks) < std::tie(b.program, a.ticks);
    });
    benchmark::DoNotOptimize(entries);
  }
  CountEntries(state, arrivals);
}
BENCHMARK(SortEntries)
    ->Name("ordering/std::stable_sort")
    ->Arg(1)
    ->Arg(2000)
    ->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace ptick::bench
