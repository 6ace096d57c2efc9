// Numbering the program names of trace lines, of 2,000 and of 100,000 programs.

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "bench_texts.h"
#include "generator/program_names.h"
#include "generator/random.h"
#include "profile/ticks/name_table.h"

namespace ptick::bench {

namespace {

// Program names one after another, as they come in a profile: not where the table keeps them.
class NameSequence {
 public:
  explicit NameSequence(std::uint32_t programs) {
    const std::vector<std::string> all = ProgramNames(programs);
    Random random(1);
    std::vector<std::size_t> ends;
    for (std::uint32_t i = 0; i < kBenchLines; ++i) {
      text_ += all[random.Below(programs)];
      ends.push_back(text_.size());
    }
    std::size_t start = 0;
    for (const std::size_t end : ends) {
      names_.push_back(std::string_view(text_).substr(start, end - start));
      start = end;
    }
  }

  const std::vector<std::string_view>& Names() const { return names_; }

 private:
  std::string text_;
  std::vector<std::string_view> names_;
};

void InternNames(benchmark::State& state) {
  const NameSequence sequence(static_cast<std::uint32_t>(state.range(0)));
  for (auto _ : state) {
    NameTable table;
    for (const std::string_view name : sequence.Names()) {
      benchmark::DoNotOptimize(table.Intern(name));
    }
  }
  state.SetItemsProcessed(std::int64_t{kBenchLines} * state.iterations());
}
BENCHMARK(InternNames)->Name("name interning/NameTable")->Arg(2000)->Arg(100000);

void MapNames(benchmark::State& state) {
  const NameSequence sequence(static_cast<std::uint32_t>(state.range(0)));
  for (auto _ : state) {
    std::unordered_map<std::string, std::uint32_t> table;
    for (const std::string_view name : sequence.Names()) {
      const auto next = static_cast<std::uint32_t>(table.size());
      benchmark::DoNotOptimize(table.try_emplace(std::string(name), next).first->second);
    }
  }
  state.SetItemsProcessed(std::int64_t{kBenchLines} * state.iterations());
}
BENCHMARK(MapNames)->Name("name interning/std::unordered_map")->Arg(2000)->Arg(100000);

}  // namespace

}  // namespace ptick::bench
