#pragma once

#include <span>
#include <string_view>

#include "profile/tables/profile_tables.h"

namespace ptick {

/// The prefix of every record line; other lines are passed over.
inline constexpr std::string_view kProfilePrefix = "PROFILE:";

/// The program itself among its shared objects, which is passed over.
inline constexpr std::string_view kMainObject = "main()";

/// What the record parser does with a type of record.
enum class RecordKind {
  kTrace,
  kProgram,
  kSharedObject,
  kSubroutineCall,
  kInput,
  kPerform,
  kHeader,      ///< stores its field 2 in a header value
  kHertz,       ///< the same, and sets the clock of the inputs after it
  kStartClock,  ///< the same
  kResource,
  kTypeRate,
  kUserTicks,
};

/// How lines of one type with equal keys become one when profiles are merged.
enum class MergeKind {
  kSmallest,  ///< the smallest value stays
  kLargest,
  kDropped,  ///< a merged profile has no such lines
  kLast,     ///< the value read last stays
  kAdded,    ///< the values are added as numbers
};

/// A type of record, the one place that says everything about it. docs/record-format.md has the
/// same table for those who write profiles.
struct RecordType {
  std::string_view name;  ///< as it is written in a profile, in lower case
  MergeKind merge;
  RecordKind kind;
  Value ProfileTables::*header = nullptr;  ///< for the kinds that store a header value
};

std::span<const RecordType> RecordTypes();

/// Takes the value of a record of a type that fills a header value.
void SetHeader(const RecordType& type, std::string_view value, ProfileTables& tables);

/// Whether the profile has a record of that type, which fills a header value.
bool HasHeader(const RecordType& type, const ProfileTables& tables);

/// The type of that name, upper and lower case alike; null when there is none.
const RecordType* FindRecordType(std::string_view name);

/// How lines of that type are merged. Names are compared exactly, and lines of unknown types are
/// added: `MinKeys`, `MaxKeys`, `DroppedKeys` and `LastKeys`.
MergeKind MergeKindOf(std::string_view name);

}  // namespace ptick
