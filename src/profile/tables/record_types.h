#pragma once

#include <span>
#include <string_view>

#include "profile/tables/profile_tables.h"

namespace ptick {

/// The prefix of every record line; other lines are passed over.
inline constexpr std::string_view kProfilePrefix = "PROFILE:";

/// What the record parser does with a type of record.
enum class RecordKind {
  kTrace,
  kProgram,
  kSharedObject,
  kSubroutineCall,
  kInput,
  kPerform,
  kHeader,      ///< stores its field 2 in a header value
  kStartClock,  ///< the same, and starts the clock of the keyboard script
  kResource,
  kTypeRate,
  kUserTicks,
};

/// A type of record: its name as it stands in a profile, in lower case.
struct RecordType {
  std::string_view name;
  RecordKind kind;
  Value ProfileTables::*header = nullptr;  ///< for the header kinds
};

/// All types of record.
std::span<const RecordType> RecordTypes();

/// The type of that name, upper and lower case alike; null when there is none.
const RecordType* FindRecordType(std::string_view name);

}  // namespace ptick
