#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "profile/ticks/tick_entry.h"

namespace ptick {

/// Trace entries with small tick counts, kept apart by tick count as they arrive: what would be
/// sorted is in order already, and the count itself takes no memory. Nearly all entries of a
/// profile are of this kind.
class TickBuckets {
 public:
  /// Tick counts below this have a bucket.
  static constexpr std::uint32_t kCount = 4096;

  TickBuckets() : buckets_(kCount) {}

  void Add(const TickEntry& entry) {
    Bucket& bucket = buckets_[entry.Ticks];
    if (bucket.Next == bucket.End) {
      AddChunk(bucket);
    }
    *bucket.Next++ = {entry.Program, entry.Line};
  }

  /// Calls `visit` with every entry of this tick count, in reverse order of arrival.
  template <typename Visit>
  void ForEach(std::uint32_t ticks, Visit visit) const {
    const Bucket& bucket = buckets_[ticks];
    const Slot* end = bucket.Next;
    for (std::uint32_t chunk = bucket.LastChunk; chunk != kNoChunk;) {
      const Chunk& slots = chunks_[chunk];
      while (end != slots.Begin) {
        --end;
        visit(TickEntry{end->Program, end->Line, ticks});
      }
      chunk = slots.Previous;
      end = chunk == kNoChunk ? nullptr : chunks_[chunk].Begin + chunks_[chunk].Size;
    }
  }

 private:
  struct Slot {
    NameTable::Id Program;
    std::uint32_t Line;
  };

  static constexpr std::uint32_t kNoChunk = ~std::uint32_t{0};

  /// The slots of one bucket that lie together; only the last chunk of a bucket may have free ones.
  struct Chunk {
    Slot* Begin;
    std::uint32_t Size;
    std::uint32_t Previous;
  };

  struct Bucket {
    Slot* Next = nullptr;  ///< the slot to be taken next
    Slot* End = nullptr;   ///< behind the last slot of the last chunk
    std::uint32_t LastChunk = kNoChunk;
  };

  void AddChunk(Bucket& bucket);
  Slot* TakeSlots(std::size_t count);

  std::vector<Bucket> buckets_;
  std::vector<Chunk> chunks_;
  std::vector<std::unique_ptr<Slot[]>> pieces_;  // NOLINT(*-avoid-c-arrays): left uninitialised
  std::size_t free_slots_ = 0;                   ///< at the end of the last piece
};

}  // namespace ptick
