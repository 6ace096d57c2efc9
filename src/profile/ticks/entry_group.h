#pragma once

#include <cstddef>
#include <vector>

#include "profile/ticks/tick_span.h"

namespace ptick {

/// Entries that follow each other in their order, to be put into rows by program.
struct EntryGroup {
  std::vector<TickSpan> entries;
  std::vector<std::size_t> places;  ///< by program: how many, then where the next one goes

  template <typename Visit>
  void ForEach(const Visit& visit) const {
    for (const TickSpan& span : entries) {
      span.ForEach(visit);
    }
  }
};

}  // namespace ptick
