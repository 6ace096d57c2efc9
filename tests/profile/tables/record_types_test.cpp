#include "profile/tables/record_types.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "value/text.h"

namespace ptick {
namespace {

using Tables = ProfileTables;

const std::vector<RecordType>& Types() {
  static const std::vector<RecordType> types = {
      {"trace", RecordKind::kTrace},
      {"program", RecordKind::kProgram},
      {"shared_object", RecordKind::kSharedObject},
      {"subroutine_call", RecordKind::kSubroutineCall},
      {"input", RecordKind::kInput},
      {"perform", RecordKind::kPerform},
      {"memused", RecordKind::kHeader, &Tables::MemUsed},
      {"hertz", RecordKind::kHeader, &Tables::Hertz},
      {"memfree", RecordKind::kHeader, &Tables::MemFree},
      {"pagesize", RecordKind::kHeader, &Tables::PageSize},
      {"resource", RecordKind::kResource},
      {"starttime", RecordKind::kHeader, &Tables::StartTime},
      {"startclock", RecordKind::kStartClock, &Tables::StartClock},
      {"endtime", RecordKind::kHeader, &Tables::EndTime},
      {"endclock", RecordKind::kHeader, &Tables::EndClock},
      {"ticks", RecordKind::kHeader, &Tables::TotalTicks},
      {"ticks_index", RecordKind::kHeader, &Tables::TicksIndex},
      {"index_count", RecordKind::kHeader, &Tables::IndexCount},
      {"ticks_trigger", RecordKind::kHeader, &Tables::TicksTrigger},
      {"trigger_count", RecordKind::kHeader, &Tables::TriggerCount},
      {"usrcpu", RecordKind::kHeader, &Tables::UsrCpu},
      {"syscpu", RecordKind::kHeader, &Tables::SysCpu},
      {"read_count", RecordKind::kHeader, &Tables::ReadCount},
      {"write_count", RecordKind::kHeader, &Tables::WriteCount},
      {"delete_count", RecordKind::kHeader, &Tables::DeleteCount},
      {"clearfile_count", RecordKind::kHeader, &Tables::ClearFileCount},
      {"open_count", RecordKind::kHeader, &Tables::OpenCount},
      {"input_count", RecordKind::kHeader, &Tables::InputCount},
      {"portno", RecordKind::kHeader, &Tables::PortNo},
      {"pid", RecordKind::kHeader, &Tables::Pid},
      {"ppid", RecordKind::kHeader, &Tables::PPid},
      {"typerate", RecordKind::kTypeRate},
      {"user_ticks", RecordKind::kUserTicks},
  };
  return types;
}

TEST(RecordTypes, AreTheseAndNoOthers) {
  EXPECT_EQ(Types().size(), 33U);
  EXPECT_EQ(RecordTypes().size(), Types().size());
  for (const RecordType& want : Types()) {
    const RecordType* type = FindRecordType(want.name);
    ASSERT_NE(type, nullptr) << want.name;
    EXPECT_EQ(type->name, want.name);
    EXPECT_EQ(type->kind, want.kind) << want.name;
    EXPECT_TRUE(type->header == want.header) << want.name;
  }
}

TEST(RecordTypes, AreFoundInAnyCase) {
  for (const RecordType& type : RecordTypes()) {
    std::string capitalised(type.name);
    capitalised.front() = UpperCase(capitalised.substr(0, 1)).front();
    for (const std::string& name : {UpperCase(type.name), capitalised}) {
      EXPECT_EQ(FindRecordType(name), &type) << name;
    }
  }
}

TEST(RecordTypes, AreComparedWhole) {
  for (const RecordType& type : RecordTypes()) {
    const std::string name(type.name);
    for (const std::string& other :
         {name + " ", " " + name, name + "x", name + '\0', name + ":", name + "\r"}) {
      EXPECT_EQ(FindRecordType(other), nullptr) << other;
    }
  }
}

TEST(RecordTypes, HaveNoOtherNames) {
  const std::vector<std::string_view> others = {
      "",          "trac",      "ticksindex", "tick",        "user-ticks", "user_tick",
      "resources", "typedelay", "type",       "cmd",         "profile",    "shared_objects",
      "tr\341ce",  "t",         "subroutine", "read_counts", "0",          "@race",
  };
  for (const std::string_view name : others) {
    EXPECT_EQ(FindRecordType(name), nullptr) << name;
  }
}

}  // namespace
}  // namespace ptick
