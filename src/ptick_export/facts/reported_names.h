// What reports show of a profile besides its lines.
#pragma once

#include <string_view>
#include <vector>

#include "profile/tables/profile_tables.h"

namespace ptick::exports {

/// The names of the shared objects as the report lists them: in byte order, each as often as it was
/// recorded. They point into the tables.
std::vector<std::string_view> SortedObjects(const ProfileTables& tables);

/// Whether the profile has a record of its command line.
bool HasProgram(const ProfileTables& tables);

}  // namespace ptick::exports
