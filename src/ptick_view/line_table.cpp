#include "ptick_view/line_table.h"

#include <algorithm>

#include "figures/running_sum.h"

namespace ptick::view {

LineTable::LineTable(const ProfileTables& tables) {
  compare::Side side(compare::Kind::kLine, names_);
  side.AddRun(tables);
  lines_.reserve(side.Keys().size());
  for (compare::KeyTable::Id id = 0; id < side.Keys().size(); ++id) {
    lines_.push_back({.key = side.Keys()[id], .ticks = side.Values().Sum(id)});
  }
  AddUpPrograms();
  const std::vector<std::uint32_t> places = compare::PlacesByBytes(names_.Names());
  std::ranges::sort(lines_, [&](const Line& a, const Line& b) {
    if (const int order = CompareNumbers(a.ticks, b.ticks); order != 0) {
      return order > 0;
    }
    return a.key.name != b.key.name ? places[a.key.name] < places[b.key.name]
                                    : names_.LinePrecedes(a.key.detail, b.key.detail);
  });
  std::ranges::sort(programs_, [&](const Program& a, const Program& b) {
    const int order = CompareNumbers(a.ticks, b.ticks);
    return order != 0 ? order > 0 : places[a.name] < places[b.name];
  });
}

void LineTable::AddUpPrograms() {
  std::vector<RunningSum> ticks(names_.Names().size());
  std::vector<std::uint64_t> lines(names_.Names().size());
  for (const Line& line : lines_) {
    ticks[line.key.name].Add(Value(line.ticks));
    ++lines[line.key.name];
  }
  for (std::uint32_t name = 0; name < ticks.size(); ++name) {
    programs_.push_back(
        {.name = name, .ticks = ticks[name].Total().AsNumber(), .lines = lines[name]});
  }
}

}  // namespace ptick::view
