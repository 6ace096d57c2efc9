#pragma once

#include "profile/scan/tab_fields.h"
#include "profile/tables/profile_tables.h"

namespace ptick {

/// Adds a "perform" record, whose fields after the type are pairs of a key and a value, to
/// `performs`, and keeps it there when `keep` is set. A record without a usable command is passed
/// over.
void AddPerform(TabFields fields, bool keep, PerformTable& performs);

}  // namespace ptick
