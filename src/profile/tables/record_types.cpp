#include "profile/tables/record_types.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>

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

static_assert(kRecordTypes.size() <= kMaxRecordTypes);

std::size_t PlaceOf(const RecordType& type) {
  return static_cast<std::size_t>(&type - kRecordTypes.data());
}

/// The types, those of one length next to each other: few are left to be compared.
class TypesBySize {
 public:
  constexpr TypesBySize() {
    std::size_t place = 0;
    for (std::size_t size = 0; size <= kMaxSize; ++size) {
      starts_[size] = place;
      for (const RecordType& type : kRecordTypes) {
        if (type.name.size() == size) {
          types_[place++] = &type;
        }
      }
    }
    starts_[kMaxSize + 1] = place;
  }

  /// Whether each type has its place.
  constexpr bool IsComplete() const { return starts_.back() == kRecordTypes.size(); }

  /// The type whose name is `name`, letter by letter as `equal` says.
  template <typename Equal>
  const RecordType* Find(std::string_view name, const Equal& equal) const {
    if (name.size() > kMaxSize) {
      return nullptr;
    }
    for (std::size_t place = starts_[name.size()]; place < starts_[name.size() + 1]; ++place) {
      if (std::ranges::equal(name, types_[place]->name, equal)) {
        return types_[place];
      }
    }
    return nullptr;
  }

 private:
  static constexpr std::size_t kMaxSize = 15;

  std::array<const RecordType*, kRecordTypes.size()> types_{};
  std::array<std::size_t, kMaxSize + 2> starts_{};
};

constexpr TypesBySize kTypesBySize;
static_assert(kTypesBySize.IsComplete());

char LowerCase(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

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
  return kTypesBySize.Find(name, [](char a, char b) { return LowerCase(a) == b; });
}

MergeKind MergeKindOf(std::string_view name) {
  const RecordType* const type = kTypesBySize.Find(name, std::equal_to<>());
  return type == nullptr ? MergeKind::kAdded : type->merge;
}

}  // namespace ptick
