#include "model/model_reports.h"
#include "value/arithmetic.h"
#include "value/dynamic_array.h"
#include "value/list_operations.h"
#include "value/mask.h"
#include "value/text.h"

namespace ptick::model {

namespace {

// Commands are never empty and hold no field marks, so mark-delimited lists hold them as they are.
struct PerformLists {
  std::string commands;
  std::string times;
};

PerformLists CountCommands(const ModelTables& tables) {
  PerformLists lists;
  for (const Value& entry : tables.Performs) {
    const std::string command = Extract(entry.Text(), {1, 9});
    const Located known = Locate(command, lists.commands, {}, LocateOrder::kNone);
    if (known.found) {
      const Value times = Extract(lists.times, {known.position});
      lists.times = Assign(lists.times, {known.position}, Increment(times));
    } else {
      const Place after_last = {DCount(lists.commands, kFieldMark) + 1};
      lists.commands = Assign(lists.commands, after_last, command);
      lists.times = Assign(lists.times, after_last, 1);
    }
  }
  return lists;
}

std::string SortedKeys(const PerformLists& lists) {
  std::string keys;
  for (std::int64_t n = 1; n <= DCount(lists.commands, kFieldMark); ++n) {
    const std::string times = Extract(lists.times, {n});
    const std::string rank = Fmt(Subtract(999999999, times), "R%10");
    const std::string command = Extract(lists.commands, {n});
    keys = Assign(keys, {-1}, std::string(rank).append("*").append(times).append("*" + command));
  }
  return Sort(keys);
}

std::string Seconds(const std::string& ticks, const Value& hertz) {
  return Divide(ticks, hertz).Text();
}

// Seconds per keystroke over the whole run; no characters count as one.
std::string TypeDelay(std::string type_rate, const Value& hertz) {
  if (Value(Extract(type_rate, {1})) == 0) {
    type_rate = Assign(type_rate, {1}, 1);
  }
  return Divide(Divide(Extract(type_rate, {2}), Extract(type_rate, {1})), hertz).Text();
}

}  // namespace

PerformCounts ModelPerformSummary(const ModelTables& tables) {
  const std::string keys = SortedKeys(CountCommands(tables));
  PerformCounts counts;
  for (std::int64_t n = 1; n <= DCount(keys, kFieldMark); ++n) {
    const std::string key = Extract(keys, {n});
    counts.emplace_back(Field(key, '*', 3, 99999).text, Field(key, '*', 2).text);
  }
  return counts;
}

std::vector<std::string> ModelPerforms(const ModelTables& tables) {
  std::vector<std::string> lines;
  for (const auto& [command, times] : ModelPerformSummary(tables)) {
    lines.push_back(Fmt(times, "L#10") + " " + command);
  }
  return lines;
}

std::vector<std::string> ModelVerbosePerforms(const ModelTables& tables, std::int64_t page_width) {
  const Value& hertz = tables.headers.at("hertz");
  std::vector<std::string> lines;
  for (const Value& entry : tables.Performs) {
    const auto value = [&entry](std::int64_t n) { return Extract(entry.Text(), {1, n}); };
    const Value elapsed = Divide(Subtract(value(2), value(1)), hertz);
    std::string line = Fmt(elapsed, "L#7") + " ";
    line += Fmt(UpperCase(value(8)), "L#4") + " ";
    line += Fmt(value(5), "L#7") + " ";
    line += Fmt(Seconds(value(6), hertz) + "," + Seconds(value(7), hertz), "L#13") + " ";
    line += Substring(value(9), 1, page_width - Len(line) - 1);
    lines.push_back(line);
  }
  return lines;
}

std::vector<std::string> ModelSubroutines(const ModelTables& tables) {
  std::vector<std::string> lines;
  for (std::size_t n = 0; n < tables.SubroutineTimes.size(); ++n) {
    lines.push_back(Fmt(tables.SubroutineTimes[n], "L#10") + "  " +
                    tables.SubroutinesCalled[n].Text());
  }
  return lines;
}

std::vector<std::string> ModelKeyScript(const ModelTables& tables, const RunOptions& options,
                                        const std::string& created) {
  std::vector<std::string> lines = {"*", created, "*"};
  if (!tables.ProgramCommand.Empty()) {
    const std::string command = Change(tables.ProgramCommand.Text(), " -JP", " -J");
    lines.push_back("PROGRAM \"" + command + R"(" STDOUT "-" STDERR "-")");
    lines.emplace_back("PipeNumber = $PIPE");
  }
  const Value& hertz = tables.headers.at("hertz");
  if (!options.TypeRateOption && !hertz.Empty() && !tables.TypeRate.Empty()) {
    lines.push_back("TYPEDELAY " + TypeDelay(tables.TypeRate.Text(), hertz));
  }
  for (const Value& line : tables.KeyScript) {
    lines.push_back(line.Text());
  }
  if (!tables.ProgramCommand.Empty()) {
    lines.emplace_back("WAIT PIPE PipeNumber");
  }
  return lines;
}

}  // namespace ptick::model
