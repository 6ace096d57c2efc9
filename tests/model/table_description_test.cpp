// What the models compare is all that the tables hold: a value that no description shows could be
// wrong unnoticed.

#include "model/table_description.h"

#include <gtest/gtest.h>

#include <string>

#include "profile/tables/record_types.h"
#include "support/profiles.h"

namespace ptick::model {

namespace {

std::string DescriptionOf(std::string_view text) {
  const testing::Parsed parsed = testing::Parse(text);
  return Describe(*parsed.tables, {});
}

TEST(TableDescription, ShowsEveryHeaderValue) {
  for (const RecordType& type : RecordTypes()) {
    if (type.header == nullptr) {
      continue;
    }
    ProfileTables tables;
    tables.*type.header = "changed";
    ProfileTables unchanged;
    EXPECT_NE(Describe(tables, {}), Describe(unchanged, {})) << type.name;
  }
}

TEST(TableDescription, ShowsTheStartValueOfEveryHeader) {
  ProfileTables tables;
  EXPECT_EQ(Describe(tables, {}), Describe(ModelTables(), {}));
}

TEST(TableDescription, ShowsAllOtherRecords) {
  for (const std::string_view record :
       {"trace|P|1|2", "program|P", "shared_object|lib|1", "subroutine_call|A B|3",
        "input|13|1|2|3|x", "perform|cmd|LIST", "resource|1", "typerate|1|2", "user_ticks|3|4"}) {
    EXPECT_NE(DescriptionOf(testing::Records({record})), DescriptionOf("")) << record;
  }
}

}  // namespace

}  // namespace ptick::model
