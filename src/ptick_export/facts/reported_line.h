// An entry as reports show it: a row of its own, whatever the others are.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "profile/ticks/ordered_ticks.h"
#include "value/value.h"

namespace ptick::exports {

struct ReportedLine {
  /// Where the line is written the ordinary way: digits, no zeros before them, below 2^32.
  std::optional<std::uint32_t> number;
  std::string_view text;  ///< where it is not
  Number ticks;           ///< as they count
};

ReportedLine ReportedLineOf(const OrderedTicks& ticks, const TickEntry& entry);

}  // namespace ptick::exports
