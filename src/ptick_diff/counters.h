// What the counters of a profile count.
#pragma once

#include <string_view>

namespace ptick::compare {

/// The unit of a counter by its name: "ticks", "clock ticks", "seconds", "events".
std::string_view UnitOf(std::string_view counter);

}  // namespace ptick::compare
