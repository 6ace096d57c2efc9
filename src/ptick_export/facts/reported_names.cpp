#include "ptick_export/facts/reported_names.h"

#include <algorithm>
#include <cstddef>

namespace ptick::exports {

std::vector<std::string_view> SortedObjects(const ProfileTables& tables) {
  std::vector<std::string_view> names;
  names.reserve(tables.SharedObjects.size());
  for (std::size_t n = 0; n < tables.SharedObjects.size(); ++n) {
    names.push_back(tables.SharedObjects[n]);
  }
  std::ranges::sort(names);
  return names;
}

bool HasProgram(const ProfileTables& tables) {
  // A record without a command line leaves both empty.
  return !tables.ProgramCommand.empty() || tables.ProgramName.empty();
}

}  // namespace ptick::exports
