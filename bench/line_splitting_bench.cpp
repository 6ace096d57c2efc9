// Finding the lines of a profile: RecordBlocks hands them out in blocks, which are then searched.

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <sstream>
#include <string>
#include <string_view>

#include "bench_texts.h"
#include "records/line_blocks.h"

namespace ptick::bench {

namespace {

std::size_t CountLines(std::string_view text) {
  std::size_t lines = 0;
  const char* at = text.data();
  const char* const end = at + text.size();
  while (const void* found = std::memchr(at, '\n', static_cast<std::size_t>(end - at))) {
    at = static_cast<const char*>(found) + 1;
    ++lines;
  }
  return lines;
}

void CountBytes(benchmark::State& state, std::string_view text) {
  state.SetBytesProcessed(static_cast<std::int64_t>(text.size()) * state.iterations());
}

void SplitWithRecordBlocks(benchmark::State& state) {
  const BenchText profile(Records::kTrace);
  for (auto _ : state) {
    RecordBlocks blocks(RecordOfText(profile.Text()));
    std::size_t lines = 0;
    for (std::string_view block = blocks.Next(); !block.empty(); block = blocks.Next()) {
      lines += CountLines(block);
    }
    benchmark::DoNotOptimize(lines);
  }
  CountBytes(state, profile.Text());
}
BENCHMARK(SplitWithRecordBlocks)->Name("line splitting/RecordBlocks");

void SplitWithMemchr(benchmark::State& state) {
  const BenchText profile(Records::kTrace);
  for (auto _ : state) {
    benchmark::DoNotOptimize(CountLines(profile.Text()));
  }
  CountBytes(state, profile.Text());
}
BENCHMARK(SplitWithMemchr)->Name("line splitting/memchr, no reading");

void SplitWithGetline(benchmark::State& state) {
  const BenchText profile(Records::kTrace);
  std::istringstream stream{std::string(profile.Text())};
  for (auto _ : state) {
    stream.clear();
    stream.seekg(0);
    std::size_t lines = 0;
    for (std::string line; std::getline(stream, line);) {
      ++lines;
    }
    benchmark::DoNotOptimize(lines);
  }
  CountBytes(state, profile.Text());
}
BENCHMARK(SplitWithGetline)->Name("line splitting/std::getline");

}  // namespace

}  // namespace ptick::bench
