// What happened when: commands and inputs on a time line, on tracks where they nest.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "profile/tables/profile_tables.h"

namespace ptick::exports {

/// A stretch of time, in nanoseconds from the start clock of the run; where the profile has none,
/// from the earliest clock on the time line.
struct TimeSpan {
  std::int64_t begin = 0;
  std::int64_t end = 0;     ///< not before `begin`
  std::uint32_t index = 0;  ///< which command or input it is, in recorded order
  std::uint32_t track = 0;
};

/// Spans of one kind, by track, then by time, those that contain others first.
struct TimeTracks {
  std::vector<TimeSpan> spans;
  std::uint32_t tracks = 0;
  // Why others have no place on it.
  std::uint64_t without_clocks = 0;  ///< no two clocks that are numbers
  std::uint64_t reversed = 0;        ///< they end before they begin
  std::uint64_t out_of_range = 0;    ///< more than 146 years from the start
};

/// Which of the two are wanted.
struct TimeLineParts {
  bool commands = true;
  bool inputs = true;
};

struct TimeLine {
  /// Without clock ticks per second there is no time line.
  bool has_hertz = false;
  TimeTracks commands;
  TimeTracks inputs;
};

/// The time line of the commands and inputs that the tables keep.
TimeLine MakeTimeLine(const ProfileTables& tables, const TimeLineParts& parts);

/// Gives each span a track and orders them. Spans that lie inside others share their track, and one
/// may begin where another ends; one that begins inside another and ends after it goes to another
/// track, the first free one.
void AssignTracks(TimeTracks& line);

}  // namespace ptick::exports
