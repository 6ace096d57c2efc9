#include "profile/tables/record_types.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "value/text.h"

namespace ptick {

namespace {

TEST(RecordTypes, AreNamedOnceInLowerCase) {
  std::set<std::string_view> names;
  for (const RecordType& type : RecordTypes()) {
    EXPECT_TRUE(names.insert(type.name).second) << type.name;
    EXPECT_EQ(LowerCase(type.name), type.name);
    EXPECT_EQ(FindRecordType(type.name), &type);
  }
}

TEST(RecordTypes, StoreHeaderValuesInPlacesOfTheirOwn) {
  ProfileTables tables;
  std::set<const Value*> places;
  for (const RecordType& type : RecordTypes()) {
    const bool stores = type.kind == RecordKind::kHeader || type.kind == RecordKind::kHertz ||
                        type.kind == RecordKind::kStartClock;
    EXPECT_EQ(type.header != nullptr, stores) << type.name;
    if (stores) {
      EXPECT_TRUE(places.insert(&(tables.*type.header)).second) << type.name;
    }
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
