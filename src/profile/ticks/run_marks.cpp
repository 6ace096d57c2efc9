#include "profile/ticks/run_marks.h"

#include <algorithm>
#include <limits>

namespace ptick {

void RunMarks::EndRun(std::uint32_t run, const TickBuckets& buckets) {
  constexpr std::uint64_t kMax = std::numeric_limits<std::uint32_t>::max();
  for (std::uint32_t ticks = 0; ticks < TickBuckets::kCount; ++ticks) {
    Bucket& bucket = buckets_[ticks];
    const TickBuckets::Slot* const end = buckets.EndOf(ticks);
    if (end == bucket.end) {
      continue;
    }
    const std::uint64_t count = buckets.CountOf(ticks);
    for (std::uint64_t fresh = count - bucket.count; fresh > 0;) {
      const std::uint64_t marked = std::min(fresh, kMax);
      bucket.marks.push_back({run, static_cast<std::uint32_t>(marked)});
      fresh -= marked;
    }
    bucket.end = end;
    bucket.count = count;
  }
}

}  // namespace ptick
