// The counts and other single values of a profile.
#pragma once

#include <string_view>
#include <vector>

#include "profile/tables/profile_tables.h"

namespace ptick::exports {

struct Counter {
  std::string_view name;  ///< the record type
  const Value* value;     ///< as read; empty where the record has none
};

/// The records of one value that the profile has, but its ticks and hertz, in the order of the
/// record types. They point into the tables.
std::vector<Counter> CountersOf(const ProfileTables& tables);

}  // namespace ptick::exports
