// Reading records: trace lines by ScanTraceLine, by the rules for every record, and by cutting
// lines into strings; the other record types by the record parser and by cutting.

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "bench_texts.h"
#include "profile/parse/record_parser.h"
#include "profile/scan/tab_fields.h"
#include "profile/scan/trace_line.h"
#include "profile/ticks/tick_table.h"
#include "records/line_blocks.h"

namespace ptick::bench {

namespace {

void CountLines(benchmark::State& state) {
  state.SetItemsProcessed(std::int64_t{kBenchLines} * state.iterations());
}

void ScanTraces(benchmark::State& state) {
  const BenchText profile(Records::kTrace);
  const char* const end = profile.Text().data() + profile.Text().size();
  for (auto _ : state) {
    TickTable table;
    for (const char* line = profile.Text().data(); line != end;) {
      const TraceLine trace = ScanTraceLine(line);
      if (trace.next == nullptr) {
        line = static_cast<const char*>(std::memchr(line, '\n', 1000)) + 1;
        continue;
      }
      table.Add(table.Programs().Intern(trace.program), trace.line, trace.ticks);
      line = trace.next;
    }
    benchmark::DoNotOptimize(table);
  }
  CountLines(state);
}
BENCHMARK(ScanTraces)->Name("trace records/ScanTraceLine");

void ParseTraces(benchmark::State& state) {
  const BenchText profile(Records::kTrace);
  for (auto _ : state) {
    TickTable table;
    profile.ForEachLine([&table](std::string_view line) {
      TabFields fields(line);
      if (fields.Next() == "PROFILE:trace") {
        const std::string_view program = fields.Next();
        const std::string_view number = fields.Next();
        table.Add(program, number, fields.Next());
      }
    });
    benchmark::DoNotOptimize(table);
  }
  CountLines(state);
}
BENCHMARK(ParseTraces)->Name("trace records/TabFields");

std::vector<std::string> CutLine(std::string_view line) {
  std::vector<std::string> fields;
  std::size_t start = 0;
  for (std::size_t tab = line.find('\t'); tab != std::string_view::npos;
       tab = line.find('\t', start)) {
    fields.emplace_back(line.substr(start, tab - start));
    start = tab + 1;
  }
  fields.emplace_back(line.substr(start));
  return fields;
}

void CutTraces(benchmark::State& state) {
  const BenchText profile(Records::kTrace);
  struct Entry {
    std::string program;
    unsigned long line;
    unsigned long ticks;
  };
  for (auto _ : state) {
    std::vector<Entry> entries;
    profile.ForEachLine([&entries](std::string_view line) {
      const std::vector<std::string> fields = CutLine(line);
      if (fields.front() == "PROFILE:trace") {
        entries.push_back({fields[1], std::stoul(fields[2]), std::stoul(fields[3])});
      }
    });
    benchmark::DoNotOptimize(entries);
  }
  CountLines(state);
}
BENCHMARK(CutTraces)->Name("trace records/strings");

void ParseRecords(benchmark::State& state, Records kind) {
  const BenchText profile(kind);
  for (auto _ : state) {
    ProfileTables tables;
    RecordBlocks lines(RecordOfText(profile.Text()));
    ParseProfileLines(lines, {}, tables);
    benchmark::DoNotOptimize(tables);
  }
  CountLines(state);
}
BENCHMARK_CAPTURE(ParseRecords, perform, Records::kPerform)->Name("perform records/record parser");
BENCHMARK_CAPTURE(ParseRecords, subroutine_call, Records::kSubroutineCall)
    ->Name("subroutine_call records/record parser");
BENCHMARK_CAPTURE(ParseRecords, input, Records::kInput)->Name("input records/record parser");

void CutRecords(benchmark::State& state, Records kind) {
  const BenchText profile(kind);
  for (auto _ : state) {
    std::vector<std::vector<std::string>> records;
    profile.ForEachLine([&records](std::string_view line) { records.push_back(CutLine(line)); });
    benchmark::DoNotOptimize(records);
  }
  CountLines(state);
}
BENCHMARK_CAPTURE(CutRecords, perform, Records::kPerform)->Name("perform records/strings");
BENCHMARK_CAPTURE(CutRecords, subroutine_call, Records::kSubroutineCall)
    ->Name("subroutine_call records/strings");
BENCHMARK_CAPTURE(CutRecords, input, Records::kInput)->Name("input records/strings");

}  // namespace

}  // namespace ptick::bench
