#include "ptick_export/formats/profile_names.h"

#include <cstddef>

#include "profile/ticks/name_table.h"

namespace ptick::exports {

namespace {

void Meet(const NameTable& names, companion::DistinctTexts& texts) {
  for (NameTable::Id id = 0; id < names.size(); ++id) {
    texts.Of(names[id]);
  }
}

}  // namespace

ProfileNames::ProfileNames(const ProfileTables& tables) {
  Meet(tables.Details.Programs(), programs_);
  for (std::size_t n = 0; n < tables.Subroutines.Count(); ++n) {
    programs_.Of(tables.Subroutines.Caller(n));
    programs_.Of(tables.Subroutines.Called(n));
  }
  Meet(tables.Performs.Commands(), commands_);
  for (std::size_t n = 0; n < tables.SharedObjects.size(); ++n) {
    objects_.Of(tables.SharedObjects[n]);
  }
}

}  // namespace ptick::exports
