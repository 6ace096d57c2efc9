#pragma once

#include <cstddef>
#include <vector>

#include "profile/tables/subroutine_table.h"

namespace ptick {

/// The recorded calls in the order in which they are shown: largest count first, compared as
/// numbers, equal counts in reverse order of arrival.
std::vector<std::size_t> SubroutineOrder(const SubroutineTable& subroutines);

}  // namespace ptick
