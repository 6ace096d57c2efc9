#pragma once

#include <array>
#include <bitset>
#include <cstddef>
#include <optional>
#include <string>

#include "profile/tables/keyboard_inputs.h"
#include "profile/tables/perform_table.h"
#include "profile/tables/subroutine_table.h"
#include "profile/ticks/name_list.h"
#include "profile/ticks/tick_table.h"
#include "value/value.h"

namespace ptick {

/// The keyboard speed that the profiled run measured, both as read.
struct TypingRate {
  std::string characters;  ///< number of characters typed
  std::string ticks;       ///< clock ticks spent typing them
};

/// Room for a bit for each type of record.
inline constexpr std::size_t kMaxRecordTypes = 64;

/// The in-memory model of a profile: facts as they were read, in order of arrival. Written by the
/// record parser (the loader adds the name), read by everything that shows a profile. Not to be
/// written by two threads at once; read by any number of them.
struct ProfileTables {
  std::string ProfileName;  ///< what headings show after " from profile "

  TickTable Details;  ///< the trace entries

  std::string ProgramCommand;             ///< command line of the profiled run
  std::string ProgramName = "(unknown)";  ///< its first word
  NameList SharedObjects;                 ///< duplicates kept
  SubroutineTable Subroutines;
  PerformTable Performs;
  KeyboardInputs Inputs;  ///< where they are wanted; InputCount counts them always
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

  /// By place in RecordTypes(): whether there was such a record, of those that fill a header value.
  std::bitset<kMaxRecordTypes> HeadersRead;
};

}  // namespace ptick
