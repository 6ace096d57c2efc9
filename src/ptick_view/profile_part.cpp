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
  RunningSum ticks;
  for (std::size_t row = kept; row < lines.size(); ++row) {
    ticks.Add(Value(lines[row].ticks));
  }
  writer.LeaveOut("lines", kept, lines.size(), ticks.Total().AsNumber());
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
void WriteRows(std::string_view key, std::size_t rows, DocumentWriter& writer, Write write) {
  writer.json.Key(key).BeginArray(kRows);
  for (std::size_t row = 0; row < rows; ++row) {
    write(row);
  }
  writer.json.EndArray();
}

// As many as the limit lets in; of the rest a note is made, by the name `what`.
template <typename Write>
void WriteFirstRows(std::string_view key, std::string_view what, std::size_t rows,
                    std::size_t limit, DocumentWriter& writer, Write write) {
  const std::size_t kept = std::min(rows, limit);
  WriteRows(key, kept, writer, write);
  writer.LeaveOut(what, kept, rows);
}

void WriteCommands(const PerformTable& performs, std::string_view what, exports::JsonParts& parts,
                   DocumentWriter& writer) {
  const std::vector<std::size_t> kept = KeptCommands(performs, writer.limits.commands);
  WriteRows("commands", kept.size(), writer,
            [&](std::size_t row) { parts.WriteCommand(kept[row]); });
  if (kept.size() == performs.RecordCount()) {
    return;
  }
  RunningSum ticks;
  auto next = kept.begin();
  for (std::size_t n = 0; n < performs.RecordCount(); ++n) {
    if (next != kept.end() && *next == n) {
      ++next;
    } else {
      ticks.Add(Value(performs[n].AsNumber(PerformNumber::kTicks)));
    }
  }
  writer.LeaveOut(what, kept.size(), performs.RecordCount(), ticks.Total().AsNumber());
}

// How what is left out is named.
struct TableNames {
  std::string_view commands;
  std::string_view calls;
  std::string_view objects;
  std::string_view inputs;
};
constexpr TableNames kOfRun = {"commands", "calls", "objects", "inputs"};
constexpr TableNames kOfBaseline = {"commands of the baseline", "calls of the baseline",
                                    "objects of the baseline", "inputs of the baseline"};

}  // namespace

void WriteProfile(const ProfileTables& tables, const LineTable& lines, Lines with_lines,
                  DocumentWriter& writer) {
  const TableNames& names = with_lines == Lines::kWithLines ? kOfRun : kOfBaseline;
  const Limits& limits = writer.limits;
  exports::JsonParts parts(tables, writer.json, writer.names, exports::BigNumbers::kAsTexts);
  writer.json.BeginObject();
  parts.WriteHead();
  parts.WriteCounters();
  WritePrograms(lines, writer);
  if (with_lines == Lines::kWithLines) {
    WriteLines(lines, writer);
  }
  WriteCommands(tables.Performs, names.commands, parts, writer);
  const std::vector<std::uint32_t> calls = SubroutineOrder(tables.Subroutines);
  WriteFirstRows("subroutines", names.calls, calls.size(), limits.calls, writer,
                 [&](std::size_t row) { parts.WriteSubroutine(calls[row]); });
  const std::vector<std::string_view> objects = exports::SortedObjects(tables);
  WriteFirstRows("objects", names.objects, objects.size(), limits.objects, writer,
                 [&](std::size_t row) { parts.WriteObject(objects[row]); });
  WriteFirstRows("inputs", names.inputs, tables.Inputs.Count(), limits.inputs, writer,
                 [&](std::size_t row) { parts.WriteInput(row); });
  writer.json.EndObject();
}

}  // namespace ptick::view
