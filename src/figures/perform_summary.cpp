#include "figures/perform_summary.h"

#include <algorithm>

namespace ptick {

std::vector<PerformedCommand> SummarizePerforms(const PerformTable& performs) {
  const NameTable& names = performs.Commands();
  std::vector<PerformedCommand> commands(names.size());
  for (NameTable::Id command = 0; command < names.size(); ++command) {
    commands[command] = {names[command], performs.TimesOf(command)};
  }
  std::ranges::sort(commands, [](const PerformedCommand& a, const PerformedCommand& b) {
    return a.times != b.times ? a.times > b.times : a.command < b.command;
  });
  return commands;
}

}  // namespace ptick
