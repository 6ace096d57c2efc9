#include "profile/tables/record_types.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace ptick {

namespace {

using Tables = ProfileTables;
using Kind = RecordKind;
using Merge = MergeKind;

constexpr std::array kRecordTypes = {
    RecordType{"trace", Merge::kAdded, Kind::kTrace},
    RecordType{"program", Merge::kDropped, Kind::kProgram},
    RecordType{"shared_object", Merge::kAdded, Kind::kSharedObject},
    RecordType{"subroutine_call", Merge::kAdded, Kind::kSubroutineCall},
    RecordType{"input", Merge::kDropped, Kind::kInput},
    RecordType{"perform", Merge::kAdded, Kind::kPerform},
    RecordType{"memused", Merge::kLargest, Kind::kHeader, &Tables::MemUsed},
    RecordType{"hertz", Merge::kLast, Kind::kHertz, &Tables::Hertz},
    RecordType{"memfree", Merge::kLargest, Kind::kHeader, &Tables::MemFree},
    RecordType{"pagesize", Merge::kLast, Kind::kHeader, &Tables::PageSize},
    RecordType{"resource", Merge::kDropped, Kind::kResource},
    RecordType{"starttime", Merge::kSmallest, Kind::kHeader, &Tables::StartTime},
    RecordType{"startclock", Merge::kSmallest, Kind::kStartClock, &Tables::StartClock},
    RecordType{"endtime", Merge::kLargest, Kind::kHeader, &Tables::EndTime},
    RecordType{"endclock", Merge::kLargest, Kind::kHeader, &Tables::EndClock},
    RecordType{"ticks", Merge::kAdded, Kind::kHeader, &Tables::TotalTicks},
    RecordType{"ticks_index", Merge::kAdded, Kind::kHeader, &Tables::TicksIndex},
    RecordType{"index_count", Merge::kAdded, Kind::kHeader, &Tables::IndexCount},
    RecordType{"ticks_trigger", Merge::kAdded, Kind::kHeader, &Tables::TicksTrigger},
    RecordType{"trigger_count", Merge::kAdded, Kind::kHeader, &Tables::TriggerCount},
    RecordType{"usrcpu", Merge::kAdded, Kind::kHeader, &Tables::UsrCpu},
    RecordType{"syscpu", Merge::kAdded, Kind::kHeader, &Tables::SysCpu},
    RecordType{"read_count", Merge::kAdded, Kind::kHeader, &Tables::ReadCount},
    RecordType{"write_count", Merge::kAdded, Kind::kHeader, &Tables::WriteCount},
    RecordType{"delete_count", Merge::kAdded, Kind::kHeader, &Tables::DeleteCount},
    RecordType{"clearfile_count", Merge::kAdded, Kind::kHeader, &Tables::ClearFileCount},
    RecordType{"open_count", Merge::kAdded, Kind::kHeader, &Tables::OpenCount},
    RecordType{"input_count", Merge::kAdded, Kind::kHeader, &Tables::InputCount},
    RecordType{"portno", Merge::kAdded, Kind::kHeader, &Tables::PortNo},
    RecordType{"pid", Merge::kDropped, Kind::kHeader, &Tables::Pid},
    RecordType{"ppid", Merge::kDropped, Kind::kHeader, &Tables::PPid},
    RecordType{"typerate", Merge::kDropped, Kind::kTypeRate},
    RecordType{"user_ticks", Merge::kAdded, Kind::kUserTicks},
};

static_assert(kRecordTypes.size() <= kMostRecordTypes);

std::size_t PlaceOf(const RecordType& type) {
  return static_cast<std::size_t>(&type - kRecordTypes.data());
}

char LowerCase(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

template <typename Equal>
const RecordType* Find(std::string_view name, const Equal& equal) {
  const auto* const found =
      std::find_if(kRecordTypes.begin(), kRecordTypes.end(), [&](const RecordType& type) {
        return std::equal(name.begin(), name.end(), type.name.begin(), type.name.end(), equal);
      });
  return found == kRecordTypes.end() ? nullptr : found;
}

}  // namespace

std::span<const RecordType> RecordTypes() { return kRecordTypes; }

void SetHeader(const RecordType& type, std::string_view value, ProfileTables& tables) {
  tables.*type.header = value;
  tables.HeadersRead.set(PlaceOf(type));
}

bool HasHeader(const RecordType& type, const ProfileTables& tables) {
  return tables.HeadersRead.test(PlaceOf(type));
}

const RecordType* FindRecordType(std::string_view name) {
  return Find(name, [](char a, char b) { return LowerCase(a) == b; });
}

MergeKind MergeKindOf(std::string_view name) {
  const RecordType* const type = Find(name, [](char a, char b) { return a == b; });
  return type == nullptr ? MergeKind::kAdded : type->merge;
}

}  // namespace ptick
