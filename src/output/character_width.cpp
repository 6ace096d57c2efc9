#include "output/character_width.h"

#include <algorithm>
#include <span>

#include "output/character_width_tables.h"

namespace ptick {

namespace {

bool Holds(std::span<const CharacterRange> ranges, char32_t code) {
  const auto range = std::ranges::lower_bound(ranges, code, {}, &CharacterRange::last);
  return range != ranges.end() && code >= range->first;
}

}  // namespace

int CharacterWidth(char32_t code) {
  if (code < kCombining.front().first) {
    return 1;
  }
  if (Holds(kCombining, code)) {
    return 0;
  }
  return Holds(kWide, code) ? 2 : 1;
}

}  // namespace ptick
