// A number of any form as a floating one.
#pragma once

#include <variant>

#include "value/value.h"

namespace ptick::compare {

inline double AsDouble(const Number& number) {
  return std::visit([](auto form) { return static_cast<double>(form); }, number);
}

}  // namespace ptick::compare
