// A profile of any bytes in every format of ptick-export, read back: totals are those of the
// profile, each line of each program is there once, and names stay apart.

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "companion/byte_sink.h"
#include "fuzz/export_readers.h"
#include "fuzz/fuzz_input.h"
#include "fuzz/require.h"
#include "ptick_export/formats/csv_tables.h"
#include "ptick_export/formats/format_table.h"
#include "support/profiles.h"
#include "value/arithmetic.h"

namespace {

using namespace ptick;
using fuzz::Require;

class NoMessages final : public companion::Messages {
 public:
  void Tell(const companion::Problem& problem) override {
    Require(!problem.reason.empty(), "a message says something");
  }
};

std::string Written(exports::Writer write, const std::string& profile) {
  const testing::Parsed parsed = testing::Parse(profile);
  companion::StringSink sink;
  NoMessages messages;
  write({.tables = *parsed.tables,
         .source_path = [](std::string_view) { return std::nullopt; },
         .sink = sink,
         .messages = messages});
  return sink.Text();
}

double AsDouble(const Number& number) {
  return std::visit([](auto form) { return static_cast<double>(form); }, number);
}

// Ticks by the bytes of program and line, the literal way.
using LiteralSums = std::map<std::pair<std::string, std::string>, Value>;

LiteralSums SumsOf(const std::string& profile) {
  const testing::Parsed parsed = testing::Parse(profile);
  const TickTable& details = parsed.tables->Details;
  LiteralSums sums;
  details.ForEach([&](const TickEntry& entry) {
    const bool is_exact = entry.HasExactText();
    Value& sum =
        sums[{std::string(details.Programs()[entry.program]),
              is_exact ? std::string(details.ExactLine(entry)) : std::to_string(entry.line)}];
    sum = Add(sum, is_exact ? Value(details.ExactTicks(entry)) : Value(std::int64_t{entry.ticks}));
  });
  return sums;
}

// What a format holds of sums: none that is negative, and whole ones above 0 where it cuts them.
void CheckSums(const LiteralSums& sums, const fuzz::ReadSums& read, bool is_cut) {
  std::set<std::string> programs;
  std::size_t lines = 0;
  double total = 0;
  for (const auto& [key, sum] : sums) {
    const double ticks = is_cut ? std::trunc(AsDouble(sum.AsNumber())) : AsDouble(sum.AsNumber());
    if (AsDouble(sum.AsNumber()) < 0 || (is_cut && ticks == 0)) {
      continue;
    }
    programs.insert(key.first);
    ++lines;
    total += ticks;
  }
  // Counts that are too large are left out, and huge ones lose digits here.
  if (total > 1e15) {
    return;
  }
  std::set<std::string> read_programs;
  double read_total = 0;
  for (const auto& [key, ticks] : read) {
    read_programs.insert(key.first);
    read_total += ticks;
  }
  Require(lines == read.size(), "each line is there");
  Require(programs.size() == read_programs.size(), "no two programs are one");
  Require(std::abs(total - read_total) <= 1e-6 * std::max(1.0, total), "the total is the same");
}

// Formats of numbered lines add lines up that are written in several ways: only their total is
// compared, when there are no fractions.
void CheckTotal(const LiteralSums& sums, const fuzz::ReadSums& read) {
  double total = 0;
  std::set<std::string> programs;
  for (const auto& [key, sum] : sums) {
    const double ticks = AsDouble(sum.AsNumber());
    if (ticks < 0 || ticks != std::trunc(ticks) || ticks > 1e12) {
      return;
    }
    total += ticks;
    if (ticks > 0) {
      programs.insert(key.first);
    }
  }
  double read_total = 0;
  std::set<std::string> read_programs;
  for (const auto& [key, ticks] : read) {
    read_total += ticks;
    read_programs.insert(key.first);
  }
  Require(total == read_total, "the total is the same");
  Require(programs.size() == read_programs.size(), "no two programs are one");
}

exports::Writer WriterOf(std::string_view name) {
  const auto formats = exports::Formats();
  return std::ranges::find(formats, name, &exports::Format::name)->write;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::FuzzInput input(data, size);
  const std::string profile = input.TakeRest();
  const LiteralSums sums = SumsOf(profile);
  CheckSums(sums, fuzz::ReadFolded(Written(WriterOf("folded"), profile)), true);
  CheckSums(sums, fuzz::ReadSpeedscope(Written(WriterOf("speedscope"), profile)), false);
  CheckTotal(sums, fuzz::ReadCallgrind(Written(WriterOf("callgrind"), profile)));
  CheckTotal(sums, fuzz::ReadPprof(Written(WriterOf("pprof"), profile)));
  fuzz::ReadJson(Written(WriterOf("json"), profile));
  fuzz::ReadJson(Written(WriterOf("trace"), profile));
  for (const exports::CsvTable& table : exports::CsvTables()) {
    fuzz::ReadCsv(Written(table.write, profile));
  }
  return 0;
}
