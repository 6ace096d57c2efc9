#pragma once

#include <cstdint>
#include <optional>

#include "value/value.h"

namespace ptick {

/// The whole number below 2^32 that a count is equal to; nothing for a fraction, a negative or a
/// huge count. A text with so many decimals that it rounds to a whole number is a floating one, and
/// equal to it all the same.
std::optional<std::uint32_t> RegularCount(const Number& count);

}  // namespace ptick
