#include "profile/ticks/tick_buckets.h"

#include <algorithm>

namespace ptick {

namespace {

// Chunks grow with their bucket, up to a page: a bucket of few entries takes little memory, and
// none leaves more than a page unused.
constexpr std::uint32_t kFirstChunk = 16;
constexpr std::uint32_t kMaxChunk = 512;

constexpr std::size_t kPiece = std::size_t{1} << 17U;

}  // namespace

std::uint64_t TickBuckets::CountIn(const Bucket& bucket) const {
  if (bucket.last_chunk == kNoChunk) {
    return 0;
  }
  const Chunk& last = chunks_[bucket.last_chunk];
  return last.slots_before + static_cast<std::uint64_t>(bucket.next - last.begin);
}

void TickBuckets::AddChunk(Bucket& bucket) {
  const std::uint32_t size = bucket.last_chunk == kNoChunk
                                 ? kFirstChunk
                                 : std::min(2 * chunks_[bucket.last_chunk].size, kMaxChunk);
  const std::uint64_t before = CountIn(bucket);
  Slot* const begin = TakeSlots(size);
  chunks_.push_back({begin, size, bucket.last_chunk, before});
  bucket = {begin, begin + size, static_cast<std::uint32_t>(chunks_.size() - 1)};
}

TickBuckets::Slot* TickBuckets::TakeSlots(std::size_t count) {
  if (free_slots_ < count) {
    pieces_.push_back(std::make_unique_for_overwrite<Slot[]>(kPiece));  // NOLINT(*-c-arrays)
    free_slots_ = kPiece;
  }
  Slot* const slots = pieces_.back().get() + (kPiece - free_slots_);
  free_slots_ -= count;
  return slots;
}

}  // namespace ptick
