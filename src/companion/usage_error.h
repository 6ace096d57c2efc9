// What was typed is wrong.
#pragma once

#include <stdexcept>

namespace ptick::companion {

/// The text says what is wrong: "unknown option '--colour'".
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace ptick::companion
