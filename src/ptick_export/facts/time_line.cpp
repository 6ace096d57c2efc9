#include "ptick_export/facts/time_line.h"

#include <optional>

#include "ptick_export/facts/clock_scale.h"
#include "value/number_text.h"
#include "value/value.h"

namespace ptick::exports {

namespace {

struct Clocks {
  std::optional<Number> begin;
  std::optional<Number> end;
};

std::optional<Number> ClockOf(const PerformTable::Record& perform, PerformNumber n) {
  if (const std::optional<std::uint32_t> whole = perform.Whole(n); whole && perform.Has(n)) {
    return std::int64_t{*whole};
  }
  return ParseNumber(perform.Text(n));
}

Clocks ClocksOf(const PerformTable::Record& perform) {
  return {.begin = ClockOf(perform, PerformNumber::kStartClock),
          .end = ClockOf(perform, PerformNumber::kEndClock)};
}

Clocks ClocksOf(const KeyboardInputs& inputs, std::size_t n) {
  constexpr std::size_t kStart = 2;
  constexpr std::size_t kEnd = 3;
  if (const auto numbers = inputs.OrdinaryNumbers(n)) {
    return {.begin = std::int64_t{(*numbers)[kStart]}, .end = std::int64_t{(*numbers)[kEnd]}};
  }
  const KeyboardInput input = inputs[n];
  return {.begin = ParseNumber(input.start_clock), .end = ParseNumber(input.end_clock)};
}

// Calls `visit` with the clocks of each command or input, and its place.
template <typename Visit>
void ForEachCommand(const ProfileTables& tables, Visit visit) {
  for (std::size_t n = 0; n < tables.Performs.RecordCount(); ++n) {
    visit(ClocksOf(tables.Performs[n]), n);
  }
}

template <typename Visit>
void ForEachInput(const ProfileTables& tables, Visit visit) {
  for (std::size_t n = 0; n < tables.Inputs.Count(); ++n) {
    visit(ClocksOf(tables.Inputs, n), n);
  }
}

// Where time begins.
Number StartOf(const ProfileTables& tables, const TimeLineParts& parts) {
  if (tables.StartClock.IsNumber()) {
    return tables.StartClock.AsNumber();
  }
  std::optional<Number> earliest;
  const auto see = [&earliest](const Clocks& clocks, std::size_t /*n*/) {
    if (clocks.begin && clocks.end && (!earliest || CompareNumbers(*clocks.begin, *earliest) < 0)) {
      earliest = clocks.begin;
    }
  };
  if (parts.commands) {
    ForEachCommand(tables, see);
  }
  if (parts.inputs) {
    ForEachInput(tables, see);
  }
  return earliest.value_or(std::int64_t{0});
}

void AddSpan(const Clocks& clocks, std::size_t index, const ClockScale& scale, TimeTracks& line) {
  if (!clocks.begin || !clocks.end) {
    ++line.without_clocks;
    return;
  }
  if (CompareNumbers(*clocks.end, *clocks.begin) < 0) {
    ++line.reversed;
    return;
  }
  const std::optional<std::int64_t> begin = scale.Time(*clocks.begin);
  const std::optional<std::int64_t> end = scale.Time(*clocks.end);
  if (!begin || !end) {
    ++line.out_of_range;
    return;
  }
  line.spans.push_back(
      {.begin = *begin, .end = *end, .index = static_cast<std::uint32_t>(index), .track = 0});
}

}  // namespace

TimeLine MakeTimeLine(const ProfileTables& tables, const TimeLineParts& parts) {
  TimeLine time_line;
  const Number hertz = tables.Hertz.AsNumber();
  time_line.has_hertz = CompareNumbers(hertz, std::int64_t{0}) > 0;
  if (!time_line.has_hertz) {
    return time_line;
  }
  const ClockScale scale(StartOf(tables, parts), hertz);
  if (parts.commands) {
    time_line.commands.spans.reserve(tables.Performs.RecordCount());
    ForEachCommand(tables, [&](const Clocks& clocks, std::size_t n) {
      AddSpan(clocks, n, scale, time_line.commands);
    });
    AssignTracks(time_line.commands);
  }
  if (parts.inputs) {
    time_line.inputs.spans.reserve(tables.Inputs.Count());
    ForEachInput(tables, [&](const Clocks& clocks, std::size_t n) {
      AddSpan(clocks, n, scale, time_line.inputs);
    });
    AssignTracks(time_line.inputs);
  }
  return time_line;
}

}  // namespace ptick::exports
