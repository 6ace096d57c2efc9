#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <vector>

#include "profile/ticks/bucket_part.h"
#include "profile/ticks/tick_span.h"

namespace ptick {

/// Walks over the entries of one tick count in all parts, run by run, from the last to the first.
class PartsBackwards {
 public:
  explicit PartsBackwards(std::span<const BucketPart> parts) : parts_(parts) {}

  /// Calls `visit` with spans of all entries of this tick count, in reverse order of arrival.
  template <typename Visit>
  void ForEach(std::uint32_t ticks, Visit& visit) {
    Start(ticks);
    while (!cursors_.empty()) {
      const auto last = std::ranges::max_element(cursors_, {}, &Cursor::LastRun);
      VisitRun(*last, ticks, visit);
      if (last->marks.empty()) {
        cursors_.erase(last);
      }
    }
  }

 private:
  /// What is left of a part.
  struct Cursor {
    const BucketPart* part;
    TickBuckets::Backwards slots;
    std::span<const RunMarks::Mark> marks;

    std::uint32_t LastRun() const { return marks.back().run; }
  };

  void Start(std::uint32_t ticks) {
    for (const BucketPart& part : parts_) {
      if (const auto marks = part.marks.Of(ticks); !marks.empty()) {
        cursors_.push_back({&part, {part.buckets, ticks}, marks});
      }
    }
  }

  template <typename Visit>
  static void VisitRun(Cursor& cursor, std::uint32_t ticks, Visit& visit) {
    for (std::size_t left = cursor.marks.back().count; left > 0;) {
      const std::span<const TickBuckets::Slot> slots = cursor.slots.Next(left);
      visit(TickSpan(slots, ticks, cursor.part));
      left -= slots.size();
    }
    cursor.marks = cursor.marks.first(cursor.marks.size() - 1);
  }

  std::span<const BucketPart> parts_;
  std::vector<Cursor> cursors_;
};

}  // namespace ptick
