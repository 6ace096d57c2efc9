// Takes arguments apart into options and the rest.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "companion/help_text.h"

namespace ptick::companion {

/// An option as it was given.
struct GivenOption {
  /// Its place in the list of options.
  std::size_t option;
  /// Its value; empty for an option without one.
  std::string value;
};

struct Arguments {
  /// In the order in which they were given.
  std::vector<GivenOption> options;
  /// Everything else, in its order: operands, what divides them, what looks like an option and is
  /// none, and the "--" that ends the options.
  std::vector<std::string> rest;
};

/// Throws a UsageError where a value is missing, or given to an option that takes none.
Arguments ParseArguments(const std::vector<OptionInfo>& options,
                         const std::vector<std::string>& arguments);

}  // namespace ptick::companion
