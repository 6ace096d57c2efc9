#pragma once

#include <cstdint>
#include <vector>

#include "profile/tables/subroutine_table.h"

namespace ptick {

/// The recorded calls in the order in which they are shown: largest count first, compared as
/// numbers, equal counts in reverse order of arrival. There are fewer than 2^32.
std::vector<std::uint32_t> SubroutineOrder(const SubroutineTable& subroutines);

}  // namespace ptick
