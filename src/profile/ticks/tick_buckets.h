#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "profile/ticks/tick_entry.h"

namespace ptick {

/// Trace entries with small tick counts, one list per tick count: nothing has to be sorted later,
/// and the count itself is not stored. Nearly all entries of a profile are of this kind.
class TickBuckets {
 public:
  /// Tick counts below this have a bucket.
  static constexpr std::uint32_t kCount = 4096;

  /// An entry without its tick count.
  struct Slot {
    NameTable::Id program;
    std::uint32_t line;
  };

  class Backwards;

  TickBuckets() : buckets_(kCount) {}

  void Add(const TickEntry& entry) {
    Bucket& bucket = buckets_[entry.ticks];
    if (bucket.next == bucket.end) {
      AddChunk(bucket);
    }
    *bucket.next++ = {entry.program, entry.line};
  }

  /// How many entries have this tick count.
  std::uint64_t CountOf(std::uint32_t ticks) const { return CountIn(buckets_[ticks]); }

  /// The place after the last entry of this tick count; another one after every Add to it.
  const Slot* EndOf(std::uint32_t ticks) const { return buckets_[ticks].next; }

 private:
  static constexpr std::uint32_t kNoChunk = ~std::uint32_t{0};

  /// The slots of one bucket that lie together; only the last chunk of a bucket may have free ones.
  struct Chunk {
    Slot* begin;
    std::uint32_t size;
    std::uint32_t previous;
    std::uint64_t slots_before;  ///< in the chunks of the bucket before this one
  };

  struct Bucket {
    Slot* next = nullptr;  ///< the slot to be taken next
    Slot* end = nullptr;   ///< after the last slot of the last chunk
    std::uint32_t last_chunk = kNoChunk;
  };

  std::uint64_t CountIn(const Bucket& bucket) const;
  void AddChunk(Bucket& bucket);
  Slot* TakeSlots(std::size_t count);

  std::vector<Bucket> buckets_;
  std::vector<Chunk> chunks_;
  std::vector<std::unique_ptr<Slot[]>> pieces_;  // NOLINT(*-avoid-c-arrays): left uninitialised
  std::size_t free_slots_ = 0;                   ///< at the end of the last piece
};

/// Walks over the entries of one tick count from the last to the first.
class TickBuckets::Backwards {
 public:
  Backwards(const TickBuckets& buckets, std::uint32_t ticks)
      : chunks_(buckets.chunks_.data()),
        end_(buckets.buckets_[ticks].next),
        chunk_(buckets.buckets_[ticks].last_chunk) {}

  /// The next entries, of at most `most` of them those that lie together, the last one being the
  /// next one; empty at the end.
  std::span<const Slot> Next(std::size_t most) {
    if (chunk_ == kNoChunk) {
      return {};
    }
    const Chunk& chunk = chunks_[chunk_];
    const auto left = static_cast<std::size_t>(end_ - chunk.begin);
    if (most < left) {
      end_ -= most;
      return {end_, most};
    }
    chunk_ = chunk.previous;
    end_ = chunk_ == kNoChunk ? nullptr : chunks_[chunk_].begin + chunks_[chunk_].size;
    return {chunk.begin, left};
  }

 private:
  const Chunk* chunks_;
  const Slot* end_;
  std::uint32_t chunk_;
};

}  // namespace ptick
