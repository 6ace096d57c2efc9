#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "profile/ticks/tick_buckets.h"

namespace ptick {

/// Where the runs end in the buckets that one of several threads fills. A run is what follows each
/// other in a profile and was taken by one thread; runs are numbered in the order of the profile.
class RunMarks {
 public:
  /// How many entries of one tick count a run has, at least 1.
  struct Mark {
    std::uint32_t run;
    std::uint32_t count;
  };

  RunMarks() : buckets_(TickBuckets::kCount) {}

  /// The entries that have come to the buckets since the last call are those of `run`, whose number
  /// is above those before.
  void EndRun(std::uint32_t run, const TickBuckets& buckets);

  /// The runs that have entries of this tick count, in order.
  std::span<const Mark> Of(std::uint32_t ticks) const { return buckets_[ticks].marks; }

 private:
  struct Bucket {
    const TickBuckets::Slot* end = nullptr;  ///< of the entries marked
    std::uint64_t count = 0;                 ///< how many those are
    std::vector<Mark> marks;
  };

  std::vector<Bucket> buckets_;
};

}  // namespace ptick
