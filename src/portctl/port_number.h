#pragma once

#include <cstdint>

#include "value/value.h"

namespace ptick {

/// A value as the port number that the platform is asked for: its integer part, with what leaves 64
/// bits cut to the nearest number that fits; such a number is no port, and the platform says so.
std::int64_t PortNumber(const Value& port);

}  // namespace ptick
