// When a run began and how long it took.
#pragma once

#include <cstdint>
#include <optional>

#include "profile/tables/profile_tables.h"

namespace ptick::exports {

/// Nanoseconds since the beginning of 1970; nothing where the profile does not say, or names a
/// year far from ours.
std::optional<std::int64_t> StartNanoseconds(const ProfileTables& tables);

/// Nanoseconds by the clocks of start and end and by hertz; where one of these is missing, by the
/// times of start and end. Nothing where these are missing, too, or the end is before the start.
std::optional<std::int64_t> DurationNanoseconds(const ProfileTables& tables);

}  // namespace ptick::exports
