#pragma once

#include <string_view>

#include "profile/tables/profile_tables.h"

namespace ptick {

/// Turns an "input" record (record type first) into its lines of the keyboard script: a pause where
/// one is known, with `typing_rate` a typing delay, and the typed text.
void AppendKeyboardLines(std::string_view profile_line, bool typing_rate, ProfileTables& tables);

}  // namespace ptick
