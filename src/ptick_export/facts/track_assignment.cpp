#include <algorithm>
#include <set>
#include <tuple>
#include <utility>

#include "ptick_export/facts/time_line.h"

namespace ptick::exports {

namespace {

// Tracks while time goes on: on each, spans that are not over yet, each inside the one before.
class OpenTracks {
 public:
  // Takes the spans off that are over at `now`.
  void EndUntil(std::int64_t now) {
    while (!innermost_.empty() && innermost_.begin()->first <= now) {
      const std::uint32_t track = innermost_.begin()->second;
      innermost_.erase(innermost_.begin());
      ends_[track].pop_back();
      Enter(track);
    }
  }

  // The track of a span that begins now: where it fits most tightly into another, else a free one.
  std::uint32_t Take(std::int64_t end) {
    std::uint32_t track = 0;
    if (const auto around = innermost_.lower_bound({end, 0}); around != innermost_.end()) {
      track = around->second;
      innermost_.erase(around);
    } else if (!free_.empty()) {
      track = *free_.begin();
      free_.erase(free_.begin());
    } else {
      track = static_cast<std::uint32_t>(ends_.size());
      ends_.emplace_back();
    }
    ends_[track].push_back(end);
    Enter(track);
    return track;
  }

  std::uint32_t Count() const { return static_cast<std::uint32_t>(ends_.size()); }

 private:
  void Enter(std::uint32_t track) {
    if (ends_[track].empty()) {
      free_.insert(track);
    } else {
      innermost_.emplace(ends_[track].back(), track);
    }
  }

  std::vector<std::vector<std::int64_t>> ends_;  ///< by track
  std::set<std::pair<std::int64_t, std::uint32_t>> innermost_;
  std::set<std::uint32_t> free_;
};

// Those that contain others come first.
auto TimeKey(const TimeSpan& span) { return std::tuple(span.begin, -span.end, span.index); }

}  // namespace

void AssignTracks(TimeTracks& line) {
  std::ranges::sort(line.spans, {}, TimeKey);
  OpenTracks tracks;
  for (TimeSpan& span : line.spans) {
    tracks.EndUntil(span.begin);
    span.track = tracks.Take(span.end);
  }
  line.tracks = tracks.Count();
  if (line.tracks > 1) {
    std::ranges::sort(line.spans, {}, [](const TimeSpan& span) {
      return std::tuple_cat(std::tuple(span.track), TimeKey(span));
    });
  }
}

}  // namespace ptick::exports
