// Merging two profiles that name nearly the same lines, in different orders.

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "bench_texts.h"
#include "profile/merge/profile_merge.h"

namespace ptick::bench {

namespace {

class TwoProfiles {
 public:
  template <typename Use>
  void ForEachText(Use use) const {
    use(first_.Text());
    use(second_.Text());
  }
  template <typename Use>
  void ForEachLine(Use use) const {
    first_.ForEachLine(use);
    second_.ForEachLine(use);
  }

 private:
  BenchText first_{Records::kTrace, TraceKeys::kCommon, 0};
  BenchText second_{Records::kTrace, TraceKeys::kCommon, 1};
};

void MergeLines(benchmark::State& state) {
  const TwoProfiles profiles;
  for (auto _ : state) {
    ProfileMerge merge;
    profiles.ForEachText([&merge](std::string_view text) { merge.AddLines(text); });
    benchmark::DoNotOptimize(merge);
  }
  state.SetItemsProcessed(std::int64_t{2} * kBenchLines * state.iterations());
}
BENCHMARK(MergeLines)->Name("merge lookup/ProfileMerge")->Unit(benchmark::kMillisecond);

void MapLines(benchmark::State& state) {
  const TwoProfiles profiles;
  for (auto _ : state) {
    std::unordered_map<std::string, std::size_t> places;
    std::vector<unsigned long> values;
    profiles.ForEachLine([&](std::string_view line) {
      const std::size_t tab = line.rfind('\t');
      if (!line.starts_with("PROFILE:trace\t") || tab == std::string_view::npos) {
        return;
      }
      const auto [place, fresh] =
          places.try_emplace(std::string(line.substr(0, tab)), values.size());
      if (fresh) {
        values.push_back(0);
      }
      values[place->second] += std::stoul(std::string(line.substr(tab + 1)));
    });
    benchmark::DoNotOptimize(values);
  }
  state.SetItemsProcessed(std::int64_t{2} * kBenchLines * state.iterations());
}
BENCHMARK(MapLines)->Name("merge lookup/std::unordered_map")->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace ptick::bench
