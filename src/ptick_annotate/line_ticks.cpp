#include "ptick_annotate/line_ticks.h"

#include <algorithm>

#include "figures/running_sum.h"
#include "records/line_number.h"

namespace ptick::companion {

namespace {

// Puts the ticks of equal lines together. `lines` become ascending.
template <typename Line>
void AddUp(std::vector<Line>& lines) {
  std::ranges::stable_sort(lines, {}, &Line::line);
  auto out = lines.begin();
  for (auto at = lines.begin(); at != lines.end();) {
    const auto line = at->line;
    RunningSum sum;
    for (; at != lines.end() && at->line == line; ++at) {
      sum.Add(at->ticks);
    }
    if (Value total = sum.Total(); total.IsTrue()) {
      *out++ = {.line = line, .ticks = std::move(total)};
    }
  }
  lines.erase(out, lines.end());
}

}  // namespace

ProgramTicks TicksOfProgram(const OrderedTicks& ticks, std::size_t row) {
  ProgramTicks result;
  RunningSum total;
  ticks.ForEach(row, [&](const TickEntry& entry) {
    if (!entry.HasExactText()) {
      total.Add(std::int64_t{entry.ticks});
      const Value own = std::int64_t{entry.ticks};
      if (entry.line == 0) {
        result.odd.push_back({.line = "0", .ticks = own});
      } else {
        result.lines.push_back({.line = entry.line, .ticks = own});
      }
      return;
    }
    // As a number: a text that is none counts as 0.
    const Value own = ticks.ExactTicks(entry);
    const Value counted = own.AsNumber();
    total.Add(counted);
    const std::string_view line = ticks.ExactLine(entry);
    if (const std::uint32_t number = SourceLineNumber(line); number != 0) {
      result.lines.push_back({.line = number, .ticks = counted});
    } else {
      result.odd.push_back({.line = line, .ticks = counted});
    }
  });
  result.total = total.Total();
  AddUp(result.lines);
  AddUp(result.odd);
  return result;
}

}  // namespace ptick::companion
