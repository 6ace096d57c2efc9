#include "profile/tables/record_types.h"

#include <algorithm>
#include <array>

namespace ptick {

namespace {

using Tables = ProfileTables;

constexpr std::array kRecordTypes = {
    RecordType{"trace", RecordKind::kTrace},
    RecordType{"program", RecordKind::kProgram},
    RecordType{"shared_object", RecordKind::kSharedObject},
    RecordType{"subroutine_call", RecordKind::kSubroutineCall},
    RecordType{"input", RecordKind::kInput},
    RecordType{"perform", RecordKind::kPerform},
    RecordType{"memused", RecordKind::kHeader, &Tables::MemUsed},
    RecordType{"hertz", RecordKind::kHeader, &Tables::Hertz},
    RecordType{"memfree", RecordKind::kHeader, &Tables::MemFree},
    RecordType{"pagesize", RecordKind::kHeader, &Tables::PageSize},
    RecordType{"resource", RecordKind::kResource},
    RecordType{"starttime", RecordKind::kHeader, &Tables::StartTime},
    RecordType{"startclock", RecordKind::kStartClock, &Tables::StartClock},
    RecordType{"endtime", RecordKind::kHeader, &Tables::EndTime},
    RecordType{"endclock", RecordKind::kHeader, &Tables::EndClock},
    RecordType{"ticks", RecordKind::kHeader, &Tables::TotalTicks},
    RecordType{"ticks_index", RecordKind::kHeader, &Tables::TicksIndex},
    RecordType{"index_count", RecordKind::kHeader, &Tables::IndexCount},
    RecordType{"ticks_trigger", RecordKind::kHeader, &Tables::TicksTrigger},
    RecordType{"trigger_count", RecordKind::kHeader, &Tables::TriggerCount},
    RecordType{"usrcpu", RecordKind::kHeader, &Tables::UsrCpu},
    RecordType{"syscpu", RecordKind::kHeader, &Tables::SysCpu},
    RecordType{"read_count", RecordKind::kHeader, &Tables::ReadCount},
    RecordType{"write_count", RecordKind::kHeader, &Tables::WriteCount},
    RecordType{"delete_count", RecordKind::kHeader, &Tables::DeleteCount},
    RecordType{"clearfile_count", RecordKind::kHeader, &Tables::ClearFileCount},
    RecordType{"open_count", RecordKind::kHeader, &Tables::OpenCount},
    RecordType{"input_count", RecordKind::kHeader, &Tables::InputCount},
    RecordType{"portno", RecordKind::kHeader, &Tables::PortNo},
    RecordType{"pid", RecordKind::kHeader, &Tables::Pid},
    RecordType{"ppid", RecordKind::kHeader, &Tables::PPid},
    RecordType{"typerate", RecordKind::kTypeRate},
    RecordType{"user_ticks", RecordKind::kUserTicks},
};

char LowerCase(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

}  // namespace

std::span<const RecordType> RecordTypes() { return kRecordTypes; }

const RecordType* FindRecordType(std::string_view name) {
  const auto* const found =
      std::find_if(kRecordTypes.begin(), kRecordTypes.end(), [name](const RecordType& type) {
        return std::equal(name.begin(), name.end(), type.name.begin(), type.name.end(),
                          [](char a, char b) { return LowerCase(a) == b; });
      });
  return found == kRecordTypes.end() ? nullptr : found;
}

}  // namespace ptick
