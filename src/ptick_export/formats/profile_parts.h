// The parts of a profile: what formats hold, and what is kept of a profile for them.
#pragma once

#include <cstdint>

#include "profile/parse/read_options.h"

namespace ptick::exports {

enum Part : std::uint32_t {
  kLines = 1,
  kCommands = 2,
  kSubroutines = 4,
  kObjects = 8,
  kInputs = 16,
  kCounters = 32,
  kAllParts = 63,
};

/// What a reader of profiles is to keep for these parts.
ReadOptions OptionsFor(std::uint32_t parts);

}  // namespace ptick::exports
