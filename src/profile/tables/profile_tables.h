#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "profile/ticks/tick_table.h"
#include "value/field_list.h"
#include "value/value.h"

namespace ptick {

/// The keyboard speed that the profiled run measured, both as read.
struct TypingRate {
  std::string characters;  ///< number of characters typed
  std::string ticks;       ///< clock ticks spent typing them
};

/// Positions of the values of a `Performs` entry.
enum class PerformValue {
  kStartClock = 1,
  kEndClock,
  kStartTime,
  kEndTime,
  kTicks,
  kUsrCpu,
  kSysCpu,
  kType,
  kCommand,
};

/// The in-memory model of a profile. Written by the record parser only (the loader sets
/// ProfileName), read by the reports. Texts are kept as they were read.
struct ProfileTables {
  std::string ProfileName;  ///< what headings show after " from profile "

  TickTable Details;  ///< the trace entries, ordered by ticks when the parse ends

  std::string ProgramCommand;             ///< command line of the profiled run
  std::string ProgramName = "(unknown)";  ///< its first word

  FieldList SharedObjects;  ///< in order of arrival, duplicates kept
  FieldList
      SubroutineTimes;  ///< call counts, largest first, equal ones in reverse order of arrival
  FieldList SubroutinesCalled;  ///< parallel to SubroutineTimes

  /// One entry per performed command, in order of arrival: its values joined by value marks (see
  /// PerformValue), the command never empty.
  FieldList Performs;

  FieldList KeyScript;  ///< body lines of the keyboard script; only with -k

  std::optional<TypingRate> TypeRate;
  std::array<Value, 10> UserTicks{0, 0, 0, 0, 0, 0, 0, 0, 0, 0};

  // Header values; clocks, CPU times and ticks in the units of the profile.
  Value StartTime;  ///< seconds since 1 January 1970
  Value EndTime;
  Value StartClock;
  Value EndClock;
  Value Hertz;  ///< clock ticks per second; empty when elapsed times cannot be computed
  Value TotalTicks;
  Value TicksIndex;
  Value IndexCount;
  Value TicksTrigger;
  Value TriggerCount;
  Value UsrCpu;
  Value SysCpu;
  Value MemUsed;
  Value MemFree;
  Value PageSize = 0;
  std::string Resource;  ///< TAB-separated figures
  Value ReadCount = 0;
  Value WriteCount = 0;
  Value DeleteCount = 0;
  Value ClearFileCount = 0;
  Value OpenCount = 0;
  Value InputCount = 0;
  Value PortNo = -1;
  Value Pid = -1;
  Value PPid = -1;
  Value LastClock = 0;  ///< where the next pause of the keyboard script is measured from
};

/// Value n of a `Performs` entry; empty when there is none.
std::string_view ExtractPerform(std::string_view entry, PerformValue n);

}  // namespace ptick
