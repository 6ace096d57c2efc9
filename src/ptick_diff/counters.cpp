#include "ptick_diff/counters.h"

namespace ptick::compare {

std::string_view UnitOf(std::string_view counter) {
  if (counter == "elapsed") {
    return "seconds";
  }
  if (counter.ends_with("cpu")) {
    return "clock ticks";
  }
  return counter.find("ticks") == std::string_view::npos ? "events" : "ticks";
}

}  // namespace ptick::compare
