#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "profile/ticks/bucket_part.h"
#include "profile/ticks/tick_buckets.h"
#include "profile/ticks/tick_entry.h"

namespace ptick {

/// Entries that follow each other in their order and lie together in memory.
class TickSpan {
 public:
  TickSpan() = default;
  /// Entries that lie in their order.
  explicit TickSpan(std::span<const TickEntry> entries)
      : entries_(entries.data()), size_(entries.size()) {}
  /// Entries of one tick count that lie in reverse order; `part` is null where their numbers are
  /// the final ones.
  TickSpan(std::span<const TickBuckets::Slot> slots, std::uint32_t ticks, const BucketPart* part)
      : slots_(slots.data()), size_(slots.size()), ticks_(ticks), part_(part) {}

  std::size_t size() const { return size_; }

  /// Calls `visit` with every entry, in order.
  template <typename Visit>
  void ForEach(const Visit& visit) const {
    if (entries_ != nullptr) {
      for (const TickEntry *entry = entries_, *const end = entries_ + size_; entry != end;
           ++entry) {
        visit(*entry);
      }
    } else if (part_ != nullptr) {
      for (const TickBuckets::Slot* slot = slots_ + size_; slot != slots_;) {
        visit(part_->EntryOf(*--slot, ticks_));
      }
    } else {
      for (const TickBuckets::Slot* slot = slots_ + size_; slot != slots_;) {
        --slot;
        visit(TickEntry{slot->program, slot->line, ticks_});
      }
    }
  }

  /// The last entry. REQUIRES: size() > 0.
  TickEntry Last() const {
    if (entries_ != nullptr) {
      return entries_[size_ - 1];
    }
    return part_ != nullptr ? part_->EntryOf(*slots_, ticks_)
                            : TickEntry{slots_->program, slots_->line, ticks_};
  }

  /// Cuts off and returns the first `count` entries. REQUIRES: count <= size().
  TickSpan TakeFirst(std::size_t count) {
    TickSpan first = *this;
    first.size_ = count;
    size_ -= count;
    if (entries_ != nullptr) {
      entries_ += count;
    } else {
      first.slots_ += size_;
    }
    return first;
  }

 private:
  const TickEntry* entries_ = nullptr;
  const TickBuckets::Slot* slots_ = nullptr;  ///< where entries_ is null
  std::size_t size_ = 0;
  std::uint32_t ticks_ = 0;
  const BucketPart* part_ = nullptr;
};

}  // namespace ptick
