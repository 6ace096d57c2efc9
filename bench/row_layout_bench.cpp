// Laying out the rows of the per-line report.

#include <benchmark/benchmark.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <utility>

#include "bench_texts.h"
#include "generator/program_names.h"
#include "generator/random.h"
#include "profile/ticks/ordered_ticks.h"
#include "reports/row_layout.h"

namespace ptick::bench {

namespace {

constexpr std::uint32_t kPrograms = 2000;
constexpr std::int64_t kTotalTicks = 10'000'000;

OrderedTicks RandomTicks() {
  TickTable table;
  for (const std::string& name : ProgramNames(kPrograms)) {
    table.Programs().Intern(name);
  }
  Random random(1);
  for (std::uint32_t i = 0; i < kBenchLines; ++i) {
    const std::uint32_t program = random.Below(kPrograms);
    const std::uint32_t line = random.Below(5000) + 1;
    table.Add(program, line, random.Zipf());
  }
  return {std::move(table), SortOrder::kDescending, false};
}

void LayOutRows(benchmark::State& state) {
  const OrderedTicks ticks = RandomTicks();
  std::array<char, kRowWidth> row{};
  for (auto _ : state) {
    RowLayout layout(ticks, kTotalTicks);
    layout.StartList();
    ticks.ForEach(0, [&](const TickEntry& entry) {
      layout.LayOut(entry, row.data());
      benchmark::DoNotOptimize(row.data());
      benchmark::ClobberMemory();
    });
  }
  state.SetItemsProcessed(std::int64_t{kBenchLines} * state.iterations());
}
BENCHMARK(LayOutRows)->Name("row layout/RowLayout");

void PrintRows(benchmark::State& state) {
  const OrderedTicks ticks = RandomTicks();
  std::array<char, 2 * kRowWidth> row{};
  for (auto _ : state) {
    std::optional<NameTable::Id> previous;
    ticks.ForEach(0, [&](const TickEntry& entry) {
      const bool shows_name = previous != entry.program;
      const std::string name(shows_name ? ticks.Programs()[entry.program] : std::string_view());
      const std::int64_t share = std::int64_t{entry.ticks} * 10000 / kTotalTicks;
      std::snprintf(row.data(), row.size(), "%-20.20s %-6u %-8u %-6.4g", name.c_str(), entry.line,
                    entry.ticks, static_cast<double>(share) / 100);
      previous = entry.program;
      benchmark::DoNotOptimize(row.data());
      benchmark::ClobberMemory();
    });
  }
  state.SetItemsProcessed(std::int64_t{kBenchLines} * state.iterations());
}
BENCHMARK(PrintRows)->Name("row layout/snprintf");

}  // namespace

}  // namespace ptick::bench
