#pragma once

#include <cstdint>

#include "value/value.h"

namespace ptick {

/// A value as the port number that the platform is asked for: its integer part, clamped to 64
/// bits; the platform refuses a number that is no port.
std::int64_t PortNumber(const Value& port);

}  // namespace ptick
