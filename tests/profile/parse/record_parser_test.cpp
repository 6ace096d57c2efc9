#include "profile/parse/record_parser.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "profile/tables/record_types.h"
#include "support/profiles.h"

namespace ptick {

namespace {

using testing::Parse;
using testing::Parsed;
using testing::Tabs;

TEST(RecordParser, ReadsLinesThatBeginWithThePrefix) {
  struct Row {
    std::string_view text;
    std::string_view want;  ///< the total of ticks
  };
  const std::vector<Row> rows = {
      {"PROFILE:ticks|5", "5"},
      {"PROFILE:ticks|5\n", "5"},
      {"PROFILE:TICKS|5", "5"},
      {"PROFILE:Ticks|5", "5"},
      {"\n\nPROFILE:ticks|5\n\n", "5"},
      {"PROFILE:ticks|5\nPROFILE:ticks|6\n", "6"},
      {"PROFILE:ticks|5\xfePROFILE:ticks|6", "6"},
      {"PROFILE:ticks|5|6", "5"},
      {"PROFILE:ticks|5\r\n", "5\r"},
      {"PROFILE:ticks| 5 \n", " 5 "},
      // TABs at both ends go, and a run of them separates like one.
      {"|PROFILE:ticks|5", "5"},
      {"|||PROFILE:ticks|5", "5"},
      {"PROFILE:ticks||5", "5"},
      {"PROFILE:ticks|||||5||", "5"},
      {"PROFILE:ticks|5|||||", "5"},
      // Anything else is passed over.
      {"", ""},
      {"|", ""},
      {"|||", ""},
      {"ticks|5", ""},
      {"# PROFILE:ticks|5", ""},
      {" PROFILE:ticks|5", ""},
      {"| PROFILE:ticks|5", ""},
      {"profile:ticks|5", ""},
      {"Profile:ticks|5", ""},
      {"PROFILE ticks|5", ""},
      {"PROFILE", ""},
      {"PROFIL|E:ticks|5", ""},
      {"PROFILE|:ticks|5", ""},
      {"PROFILE\xfe:ticks|5", ""},
      {"\xef\xbb\xbfPROFILE:ticks|5", ""},
  };
  for (const Row& row : rows) {
    const Parsed parsed = Parse(Tabs(row.text));
    EXPECT_EQ(parsed.tables->TotalTicks.Text(), row.want) << row.text;
    EXPECT_FALSE(parsed.problem) << row.text;
  }
}

TEST(RecordParser, StopsAtALineOfAnUnknownType) {
  struct Row {
    std::string_view text;
    std::int64_t want_line;
    std::string_view want_text;
  };
  const std::vector<Row> rows = {
      {"PROFILE:bogus|1", 1, "bogus|1"},
      {"PROFILE:bogus|1\nPROFILE:other", 1, "bogus|1"},
      {"a\n\nc\nPROFILE:ticks|5\nPROFILE:trace|A|1|2\n|x\nPROFILE:bogus|1|2\n", 7, "bogus|1|2"},
      {"a\xfe"
       "b\xfePROFILE:Bogus",
       3, "Bogus"},
      {"PROFILE:trace|A|1|2\nPROFILE:trace|A|1|2\nPROFILE:bogus", 3, "bogus"},
      {"PROFILE:", 1, ""},
      {"PROFILE:|", 1, ""},
      {"PROFILE:|ticks|5", 1, "|ticks|5"},
      {"PROFILE:||ticks||5|", 1, "|ticks|5"},
      {"||PROFILE:bogus||1||", 1, "bogus|1"},
      {"PROFILE:ticks |5", 1, "ticks |5"},
      {"PROFILE: ticks|5", 1, " ticks|5"},
      {"PROFILE:ticks:|5", 1, "ticks:|5"},
      {"PROFILE:ticks 5", 1, "ticks 5"},
      {"PROFILE:ticks\r\n", 1, "ticks\r"},
      {"PROFILE:PROFILE:ticks|5", 1, "PROFILE:ticks|5"},
      {"PROFILE:trace\xfd|A|1|2", 1, "trace\xfd|A|1|2"},
  };
  for (const Row& row : rows) {
    const Parsed parsed = Parse(Tabs(row.text));
    ASSERT_TRUE(parsed.problem) << row.text;
    EXPECT_EQ(parsed.problem->kind, ReadProblem::Kind::kInvalidLine) << row.text;
    EXPECT_EQ(parsed.problem->line, row.want_line) << row.text;
    EXPECT_EQ(parsed.problem->text, Tabs(row.want_text)) << row.text;
  }
}

TEST(RecordParser, KeepsWhatCameBeforeALineOfAnUnknownType) {
  const Parsed parsed =
      Parse(Tabs("PROFILE:perform|cmd|A\nPROFILE:bogus|1\nPROFILE:perform|cmd|B"));
  EXPECT_TRUE(parsed.problem);
  EXPECT_EQ(parsed.tables->Performs.Count(), 1U);
}

// Only the type of a record is checked, never its fields.
TEST(RecordParser, TakesRecordsWithoutFields) {
  for (const RecordType& type : RecordTypes()) {
    const Parsed parsed = Parse("PROFILE:" + std::string(type.name) + "\n");
    EXPECT_FALSE(parsed.problem) << type.name;
  }
}

TEST(RecordParser, ReadsLinesOfAnyLength) {
  const std::string name(1000000, 'n');
  const Parsed parsed = Parse("PROFILE:trace\t" + name + "\t1\t2\nPROFILE:ticks\t5\n");
  EXPECT_TRUE(testing::RowTexts(std::move(parsed.tables->Details)) == name + "|1|2");
  EXPECT_EQ(parsed.tables->TotalTicks.Text(), "5");
}

TEST(RecordParser, CountsLinesOfLongProfiles) {
  std::string text;
  for (int line = 1; line <= 99999; ++line) {
    text += line % 3 == 0 ? "not for us\n" : "PROFILE:trace\tA\t1\t2\n";
  }
  const Parsed parsed = Parse(text + "PROFILE:x");
  ASSERT_TRUE(parsed.problem);
  EXPECT_EQ(parsed.problem->line, 100000);
  EXPECT_EQ(parsed.problem->text, "x");
}

}  // namespace

}  // namespace ptick
