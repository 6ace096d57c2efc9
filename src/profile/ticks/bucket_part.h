#pragma once

#include <cstdint>
#include <vector>

#include "profile/ticks/run_marks.h"
#include "profile/ticks/tick_buckets.h"
#include "profile/ticks/tick_entry.h"

namespace ptick {

/// Buckets that one of several threads has filled, with numbers of its own, and what those are
/// among the joined entries.
struct BucketPart {
  TickBuckets buckets;
  RunMarks marks;
  std::vector<NameTable::Id> programs;  ///< by the part's own number of a program
  std::uint32_t exact_texts_before = 0;

  TickEntry EntryOf(const TickBuckets::Slot& slot, std::uint32_t ticks) const {
    const std::uint32_t line =
        slot.line + (TickEntry::IsExactText(slot.line) ? exact_texts_before : 0);
    return {programs[slot.program], line, ticks};
  }
};

}  // namespace ptick
