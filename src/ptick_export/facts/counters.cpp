#include "ptick_export/facts/counters.h"

#include "profile/tables/record_types.h"

namespace ptick::exports {

std::vector<Counter> CountersOf(const ProfileTables& tables) {
  std::vector<Counter> counters;
  for (const RecordType& type : RecordTypes()) {
    if (type.header == nullptr || type.header == &ProfileTables::TotalTicks ||
        type.header == &ProfileTables::Hertz || !HasHeader(type, tables)) {
      continue;
    }
    counters.push_back({.name = type.name, .value = &(tables.*type.header)});
  }
  return counters;
}

}  // namespace ptick::exports
