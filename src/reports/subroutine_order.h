#pragma once

#include "profile/tables/profile_tables.h"

namespace ptick {

/// Orders the subroutine calls, which stand in order of arrival, as their reports show them:
/// largest count first, compared as numbers, equal counts in reverse order of arrival.
void OrderSubroutines(ProfileTables& tables);

}  // namespace ptick
