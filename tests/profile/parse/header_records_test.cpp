// The records that set values of the header, one value or a few.

#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/model_tables.h"
#include "profile/tables/record_types.h"
#include "support/profiles.h"

namespace ptick {

namespace {

using testing::Parse;
using testing::Parsed;
using testing::Records;

/// The header values, each in a line of its own.
std::string Headers(const ProfileTables& tables) {
  std::string text;
  for (const RecordType& type : RecordTypes()) {
    if (type.header != nullptr) {
      text += std::string(type.name) + "=" + (tables.*type.header).Text() + "\n";
    }
  }
  return text;
}

/// The same before the first record, as the model defines them.
std::string StartValues() {
  const model::HeaderValues start_values = model::InitialHeaders();
  std::string text;
  for (const RecordType& type : RecordTypes()) {
    if (type.header != nullptr) {
      text += std::string(type.name) + "=" + start_values.find(type.name)->second.Text() + "\n";
    }
  }
  return text;
}

TEST(HeaderRecords, LeaveStartValuesWhereThereAreNone) {
  const ProfileTables tables;
  EXPECT_EQ(Headers(tables), StartValues());
  EXPECT_EQ(Headers(*Parse("no profile at all\n").tables), StartValues());
  EXPECT_EQ(tables.ProgramName, "(unknown)");
  EXPECT_EQ(tables.ProgramCommand, "");
  EXPECT_EQ(tables.Resource, "");
  EXPECT_FALSE(tables.TypeRate);
  for (const Value& ticks : tables.UserTicks) {
    EXPECT_EQ(ticks.Text(), "0");
  }
}

TEST(HeaderRecords, SetTheirOwnValueAndNoOther) {
  const std::vector<std::string_view> values = {"5", "007", "1.50", "-1", "abc", " x ", "5\r"};
  for (const RecordType& type : RecordTypes()) {
    if (type.header == nullptr) {
      continue;
    }
    const std::string name(type.name);
    for (const std::string_view value : values) {
      const Parsed parsed = Parse("PROFILE:" + name + "\t" + std::string(value) + "\tmore\n");
      std::string want = StartValues();
      const std::size_t begin = ("\n" + want).find("\n" + name + "=") + name.size() + 1;
      want.replace(begin, want.find('\n', begin) - begin, value);
      EXPECT_EQ(Headers(*parsed.tables), want) << name;
    }
  }
}

// A count of 0 that was recorded is not the 0 of a profile that says nothing.
TEST(HeaderRecords, AreKnownToHaveBeenThere) {
  for (const RecordType& type : RecordTypes()) {
    if (type.header == nullptr) {
      continue;
    }
    const std::string record = "PROFILE:" + std::string(type.name);
    for (const std::string& text : {record + "\t0\n", record + "\n"}) {
      const Parsed parsed = Parse(text);
      for (const RecordType& other : RecordTypes()) {
        if (other.header != nullptr) {
          EXPECT_EQ(HasHeader(other, *parsed.tables), &other == &type) << text << other.name;
        }
      }
    }
  }
  // Inputs are counted by themselves, too.
  EXPECT_FALSE(
      HasHeader(*FindRecordType("input_count"), *Parse(Records({"input|13|1|5|6|a"})).tables));
}

TEST(HeaderRecords, ReplaceAnEarlierValue) {
  for (const RecordType& type : RecordTypes()) {
    if (type.header == nullptr) {
      continue;
    }
    const std::string record = "PROFILE:" + std::string(type.name);
    const auto value_after = [&](const std::string& text) {
      const Parsed parsed = Parse(text);
      return ((*parsed.tables).*type.header).Text();
    };
    EXPECT_EQ(value_after(record + "\t5\n" + record + "\t3\n"), "3") << record;
    EXPECT_EQ(value_after(record + "\t5\n" + record + "\n"), "") << record;
    EXPECT_EQ(value_after(record + "\t\t\n"), "") << record;
  }
}

TEST(HeaderRecords, KeepTheRestOfAResourceRecord) {
  struct Row {
    std::string_view record;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {"resource|1|2|3", "1|2|3"}, {"resource|one text", "one text"},
      {"RESOURCE|1| 2|", "1| 2"},  {"resource", ""},
      {"resource|1||3", "1|3"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Parse(Records({row.record})).tables->Resource, testing::Tabs(row.want)) << row.record;
  }
  EXPECT_EQ(Parse(Records({"resource|1", "resource|2"})).tables->Resource, "2");
}

TEST(HeaderRecords, KeepBothValuesOfATypingRate) {
  struct Row {
    std::string_view record;
    std::string_view want_characters;
    std::string_view want_ticks;
  };
  const std::vector<Row> rows = {
      {"typerate|120|6000", "120", "6000"}, {"typerate|120", "120", ""}, {"typerate", "", ""},
      {"typerate|007|abc|9", "007", "abc"}, {"TYPERATE|1|2", "1", "2"},
  };
  for (const Row& row : rows) {
    const Parsed parsed = Parse(Records({"typerate|8|9", row.record}));
    ASSERT_TRUE(parsed.tables->TypeRate) << row.record;
    EXPECT_EQ(parsed.tables->TypeRate->characters, row.want_characters) << row.record;
    EXPECT_EQ(parsed.tables->TypeRate->ticks, row.want_ticks) << row.record;
  }
}

/// The counters that are not 0, as "index=ticks".
std::vector<std::string> UserTicks(const ProfileTables& tables) {
  std::vector<std::string> counters;
  for (std::size_t i = 0; i < tables.UserTicks.size(); ++i) {
    if (const std::string ticks = tables.UserTicks.at(i).Text(); ticks != "0") {
      counters.push_back(std::to_string(i + 1) + "=" + ticks);
    }
  }
  return counters;
}

TEST(HeaderRecords, AddUpUserTicks) {
  struct Row {
    std::string text;
    std::vector<std::string> want;
  };
  const std::vector<Row> rows = {
      {Records({"user_ticks|3|5", "user_ticks|3|7"}), {"3=12"}},
      {Records({"user_ticks|1|5", "user_ticks|10|7"}), {"1=5", "10=7"}},
      {Records({"user_ticks|3|5", "user_ticks|3|abc", "user_ticks|3"}), {"3=5"}},
      {Records({"user_ticks|3|1.5", "user_ticks|3|0.25", "user_ticks|4|-2"}), {"3=1.75", "4=-2"}},
      {Records({"USER_TICKS|3|5|9"}), {"3=5"}},
      {Records({"user_ticks|03|5", "user_ticks|3.0|5", "user_ticks|+3|5"}), {"3=15"}},
      {Records({"user_ticks|3.7|5", "user_ticks|9.9|5"}), {"3=5", "9=5"}},
      // Other indexes are passed over.
      {Records({"user_ticks|0|5", "user_ticks|11|5", "user_ticks|-1|5", "user_ticks|100|5"}), {}},
      {Records({"user_ticks|0.9|5", "user_ticks|10.1|5"}), {}},
      {Records({"user_ticks|abc|5", "user_ticks| 3|5", "user_ticks|3x|5"}), {}},
      {Records({"user_ticks", "user_ticks||5", "user_ticks|99999999999999999999|5"}), {}},
  };
  for (const Row& row : rows) {
    const Parsed parsed = Parse(row.text);
    EXPECT_EQ(UserTicks(*parsed.tables), row.want) << row.text;
    EXPECT_FALSE(parsed.problem);
  }
}

TEST(HeaderRecords, NameTheProgram) {
  struct Row {
    std::string text;
    std::string_view want_command;
    std::string_view want_name;
  };
  const std::vector<Row> rows = {
      {Records({"program|ORDER.ENTRY"}), "ORDER.ENTRY", "ORDER.ENTRY"},
      {Records({"program|ORDER.ENTRY -JP 5"}), "ORDER.ENTRY -JP 5", "ORDER.ENTRY"},
      {Records({"program|ORDER.ENTRY|-JP|5"}), "ORDER.ENTRY -JP 5", "ORDER.ENTRY"},
      {Records({"program|A||B"}), "A B", "A"},
      {Records({"program|A  B "}), "A  B ", "A"},
      {Records({"program| A"}), " A", ""},
      {Records({"program"}), "", ""},
      {Records({"program|A", "program|B C"}), "B C", "B"},
      {Records({"PROGRAM|A"}), "A", "A"},
      {Records({"ticks|5"}), "", "(unknown)"},
  };
  for (const Row& row : rows) {
    const Parsed parsed = Parse(row.text);
    EXPECT_EQ(parsed.tables->ProgramCommand, row.want_command) << row.text;
    EXPECT_EQ(parsed.tables->ProgramName, row.want_name) << row.text;
  }
}

}  // namespace

}  // namespace ptick
