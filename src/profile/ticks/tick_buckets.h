#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "profile/ticks/tick_entry.h"

namespace ptick {

/// Trace entries with small tick counts, one list per tick count: nothing has to be sorted later,
/// and the count itself is not stored. Nearly all entries of a profile are of this kind.
class TickBuckets {
 public:
  /// Tick counts below this have a bucket.
  static constexpr std::uint32_t kCount = 4096;

  TickBuckets() : buckets_(kCount) {}

  void Add(const TickEntry& entry) {
    Bucket& bucket = buckets_[entry.ticks];
    if (bucket.next == bucket.end) {
      AddChunk(bucket);
    }
    *bucket.next++ = {entry.program, entry.line};
  }

  /// Calls `visit` with every entry of this tick count, in reverse order of arrival.
  template <typename Visit>
  void ForEach(std::uint32_t ticks, Visit visit) const {
    const Bucket& bucket = buckets_[ticks];
    const Slot* end = bucket.next;
    for (std::uint32_t chunk = bucket.last_chunk; chunk != kNoChunk;) {
      const Chunk& slots = chunks_[chunk];
      while (end != slots.begin) {
        --end;
        visit(TickEntry{end->program, end->line, ticks});
      }
      chunk = slots.previous;
      end = chunk == kNoChunk ? nullptr : chunks_[chunk].begin + chunks_[chunk].size;
    }
  }

 private:
  struct Slot {
    NameTable::Id program;
    std::uint32_t line;
  };

  static constexpr std::uint32_t kNoChunk = ~std::uint32_t{0};

  /// The slots of one bucket that lie together; only the last chunk of a bucket may have free ones.
  struct Chunk {
    Slot* begin;
    std::uint32_t size;
    std::uint32_t previous;
  };

  struct Bucket {
    Slot* next = nullptr;  ///< the slot to be taken next
    Slot* end = nullptr;   ///< after the last slot of the last chunk
    std::uint32_t last_chunk = kNoChunk;
  };

  void AddChunk(Bucket& bucket);
  Slot* TakeSlots(std::size_t count);

  std::vector<Bucket> buckets_;
  std::vector<Chunk> chunks_;
  std::vector<std::unique_ptr<Slot[]>> pieces_;  // NOLINT(*-avoid-c-arrays): left uninitialised
  std::size_t free_slots_ = 0;                   ///< at the end of the last piece
};

}  // namespace ptick
