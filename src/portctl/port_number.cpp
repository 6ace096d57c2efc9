#include "portctl/port_number.h"

#include <limits>
#include <variant>

#include "value/arithmetic.h"

namespace ptick {

std::int64_t PortNumber(const Value& port) {
  const Number whole = Int(port).AsNumber();
  if (const auto* number = std::get_if<std::int64_t>(&whole)) {
    return *number;
  }
  // Still a floating number, so out of the reach of integers.
  return std::get<double>(whole) < 0 ? std::numeric_limits<std::int64_t>::min()
                                     : std::numeric_limits<std::int64_t>::max();
}

}  // namespace ptick
