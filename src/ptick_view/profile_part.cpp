#include "ptick_view/profile_part.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <string_view>
#include <vector>

#include "figures/running_sum.h"
#include "figures/subroutine_order.h"
#include "ptick_export/facts/reported_names.h"
#include "ptick_export/formats/json_parts.h"

namespace ptick::view {

namespace {

constexpr auto kRows = companion::JsonWriter::Elements::kOnLinesOfTheirOwn;

void WritePrograms(const LineTable& lines, DocumentWriter& writer) {
  const std::vector<LineTable::Program>& programs = lines.Programs();
  writer.json.Key("programs").BeginObject();
  writer.Column("program", programs.size(), [&](std::size_t row) {
    writer.json.Number(writer.programs.NumberOf(lines.Names().Names()[programs[row].name]));
  });
  writer.Column("ticks", programs.size(),
                [&](std::size_t row) { writer.Count(programs[row].ticks); });
  writer.Column("lines", programs.size(),
                [&](std::size_t row) { writer.json.Number(programs[row].lines); });
  writer.json.EndObject();
}

void LeaveOutLines(const std::vector<LineTable::Line>& lines, std::size_t kept,
                   DocumentWriter& writer) {
  if (kept == lines.size()) {
    return;
  }
  RunningSum ticks;
  for (std::size_t row = kept; row < lines.size(); ++row) {
    ticks.Add(Value(lines[row].ticks));
  }
  writer.LeaveOut("lines", kept, lines.size());
  writer.left_out.back().ticks = ticks.Total().AsNumber();
}

void WriteLines(const LineTable& table, DocumentWriter& writer) {
  const std::vector<LineTable::Line>& lines = table.Lines();
  const std::size_t kept = std::min(lines.size(), writer.limits.lines);
  writer.json.Key("lines").BeginObject();
  writer.Column("program", kept, [&](std::size_t row) {
    writer.json.Number(writer.programs.NumberOf(table.Names().Names()[lines[row].key.name]));
  });
  writer.Column("line", kept,
                [&](std::size_t row) { writer.Line(table.Names(), lines[row].key.detail); });
  writer.Column("ticks", kept, [&](std::size_t row) { writer.Count(lines[row].ticks); });
  writer.json.EndObject();
  LeaveOutLines(lines, kept, writer);
}

// The commands that get in, those with the most ticks, in recorded order.
std::vector<std::size_t> KeptCommands(const PerformTable& performs, std::size_t limit) {
  std::vector<std::size_t> kept(performs.RecordCount());
  std::iota(kept.begin(), kept.end(), std::size_t{0});
  if (kept.size() <= limit) {
    return kept;
  }
  const auto ticks = [&](std::size_t n) { return performs[n].AsNumber(PerformNumber::kTicks); };
  std::ranges::nth_element(kept, kept.begin() + static_cast<std::ptrdiff_t>(limit),
                           [&](std::size_t a, std::size_t b) {
                             const int order = CompareNumbers(ticks(a), ticks(b));
                             return order != 0 ? order > 0 : a < b;
                           });
  kept.resize(limit);
  std::ranges::sort(kept);
  return kept;
}

template <typename Write>
void WriteRows(std::string_view key, std::size_t rows, std::size_t limit, bool notes_left_out,
               DocumentWriter& writer, Write write) {
  const std::size_t kept = std::min(rows, limit);
  writer.json.Key(key).BeginArray(kRows);
  for (std::size_t row = 0; row < kept; ++row) {
    write(row);
  }
  writer.json.EndArray();
  if (notes_left_out) {
    writer.LeaveOut(key == "subroutines" ? "calls" : key, kept, rows);
  }
}

}  // namespace

void WriteProfile(const ProfileTables& tables, const LineTable& lines, Lines with_lines,
                  DocumentWriter& writer) {
  const bool notes = with_lines == Lines::kWithLines;
  exports::JsonParts parts(tables, writer.json, writer.names, exports::BigNumbers::kAsTexts);
  writer.json.BeginObject();
  parts.WriteHead();
  parts.WriteCounters();
  WritePrograms(lines, writer);
  if (with_lines == Lines::kWithLines) {
    WriteLines(lines, writer);
  }
  const std::vector<std::size_t> commands = KeptCommands(tables.Performs, writer.limits.commands);
  WriteRows("commands", commands.size(), commands.size(), false, writer,
            [&](std::size_t row) { parts.WriteCommand(commands[row]); });
  if (notes) {
    writer.LeaveOut("commands", commands.size(), tables.Performs.RecordCount());
  }
  const std::vector<std::uint32_t> calls = SubroutineOrder(tables.Subroutines);
  WriteRows("subroutines", calls.size(), writer.limits.calls, notes, writer,
            [&](std::size_t row) { parts.WriteSubroutine(calls[row]); });
  const std::vector<std::string_view> objects = exports::SortedObjects(tables);
  WriteRows("objects", objects.size(), writer.limits.objects, notes, writer,
            [&](std::size_t row) { parts.WriteObject(objects[row]); });
  WriteRows("inputs", tables.Inputs.Count(), writer.limits.inputs, notes, writer,
            [&](std::size_t row) { parts.WriteInput(row); });
  writer.json.EndObject();
}

}  // namespace ptick::view
