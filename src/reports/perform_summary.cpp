#include "reports/perform_summary.h"

#include <algorithm>
#include <cstddef>
#include <unordered_map>

#include "profile/tables/profile_tables.h"

namespace ptick {

std::vector<PerformedCommand> SummarizePerforms(const FieldList& performs) {
  std::vector<PerformedCommand> commands;
  std::unordered_map<std::string_view, std::size_t> places;
  for (std::size_t n = 0; n < performs.size(); ++n) {
    const std::string_view command = ExtractPerform(performs[n], PerformValue::kCommand);
    const auto [place, is_new] = places.try_emplace(command, commands.size());
    if (is_new) {
      commands.push_back({.command = command});
    }
    ++commands[place->second].times;
  }
  std::sort(commands.begin(), commands.end(),
            [](const PerformedCommand& a, const PerformedCommand& b) {
              return a.times != b.times ? a.times > b.times : a.command < b.command;
            });
  return commands;
}

}  // namespace ptick
