#include "profile/profile_merge.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "support/profiles.h"

namespace ptick {
namespace {

using testing::Tabs;

/// All merged lines, with "|" for a TAB and a blank line of nothing where a block is not whole.
std::string Text(ProfileMerge& merge) {
  std::string text;
  for (std::string_view block = merge.Next(); !block.empty(); block = merge.Next()) {
    text += block;
    text += block.ends_with('\n') ? "" : "\n(a line without an end)\n";
  }
  return text;
}

std::string Merged(const std::vector<std::string_view>& lines) {
  ProfileMerge merge;
  for (const std::string_view line : lines) {
    merge.AddLines(Tabs(line) + "\n");
  }
  return Text(merge);
}

TEST(MergeKind, IsFixedForEachType) {
  struct Row {
    std::string_view RecordType;
    MergeKind Want;
  };
  const std::vector<Row> rows = {
      {"startclock", MergeKind::kSmallest}, {"starttime", MergeKind::kSmallest},
      {"endclock", MergeKind::kLargest},    {"endtime", MergeKind::kLargest},
      {"memused", MergeKind::kLargest},     {"memfree", MergeKind::kLargest},
      {"pid", MergeKind::kDropped},         {"ppid", MergeKind::kDropped},
      {"typerate", MergeKind::kDropped},    {"resource", MergeKind::kDropped},
      {"input", MergeKind::kDropped},       {"program", MergeKind::kDropped},
      {"pagesize", MergeKind::kLast},       {"hertz", MergeKind::kLast},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(MergeKindOf(row.RecordType), row.Want) << row.RecordType;
  }
}

TEST(MergeKind, IsAddedForAllOtherTypes) {
  const std::vector<std::string_view> types = {"trace",       "shared_object", "subroutine_call",
                                               "perform",     "ticks",         "ticks_index",
                                               "index_count", "ticks_trigger", "trigger_count",
                                               "usrcpu",      "syscpu",        "read_count",
                                               "write_count", "delete_count",  "clearfile_count",
                                               "open_count",  "input_count",   "portno",
                                               "user_ticks",  "bogus",         "",
                                               "PID",         "Hertz",         "STARTCLOCK",
                                               "pid ",        " pid",          "startclock2",
                                               "inputs"};
  for (const std::string_view type : types) {
    EXPECT_EQ(MergeKindOf(type), MergeKind::kAdded) << type;
  }
}

struct Row {
  std::vector<std::string_view> Values;
  std::string_view Want;
};

/// Merges lines of the types that differ in nothing but their value.
void ExpectMerged(std::initializer_list<std::string_view> types, const std::vector<Row>& rows) {
  for (const std::string_view type : types) {
    for (const Row& row : rows) {
      ProfileMerge merge;
      const std::string key = "PROFILE:" + std::string(type) + "\t";
      for (const std::string_view value : row.Values) {
        merge.AddLines(key + std::string(value) + "\n");
      }
      EXPECT_EQ(Text(merge), key + std::string(row.Want) + "\n")
          << type << " from " << row.Values.front();
    }
  }
}

TEST(ProfileMerge, KeepsTheSmallestValue) {
  ExpectMerged({"startclock", "starttime"}, {
                                                {{"100"}, "100"},
                                                {{"100", "90"}, "90"},
                                                {{"90", "100"}, "90"},
                                                {{"9", "10"}, "9"},
                                                {{"10", "9"}, "9"},
                                                {{"5", "3", "4", "3"}, "3"},
                                                {{"1", "-1"}, "-1"},
                                                {{"1.5", "1.25"}, "1.25"},
                                                {{"90", "090"}, "90"},
                                                {{"090", "90"}, "090"},
                                                // Texts are compared as texts.
                                                {{"b", "a"}, "a"},
                                                {{"5", "abc"}, "5"},
                                                {{"abc", "5"}, "5"},
                                                {{"5", ""}, ""},
                                                {{"", "5"}, ""},
                                                {{"10", "9x"}, "10"},
                                            });
}

TEST(ProfileMerge, KeepsTheLargestValue) {
  ExpectMerged({"endclock", "endtime", "memused", "memfree"}, {
                                                                  {{"500"}, "500"},
                                                                  {{"500", "700"}, "700"},
                                                                  {{"700", "500"}, "700"},
                                                                  {{"9", "10"}, "10"},
                                                                  {{"10", "9"}, "10"},
                                                                  {{"3", "5", "4", "5"}, "5"},
                                                                  {{"-1", "-2"}, "-1"},
                                                                  {{"90", "090"}, "90"},
                                                                  {{"090", "90"}, "090"},
                                                                  {{"a", "b"}, "b"},
                                                                  {{"abc", "5"}, "abc"},
                                                                  {{"5", "abc"}, "abc"},
                                                                  {{"5", ""}, "5"},
                                                                  {{"", "5"}, "5"},
                                                              });
}

TEST(ProfileMerge, KeepsTheLastValue) {
  ExpectMerged({"hertz", "pagesize"}, {
                                          {{"100"}, "100"},
                                          {{"100", "50"}, "50"},
                                          {{"50", "100"}, "100"},
                                          {{"50", "abc"}, "abc"},
                                          {{"50", ""}, ""},
                                          {{"", "0050"}, "0050"},
                                      });
}

TEST(ProfileMerge, AddsAllOtherValues) {
  ExpectMerged({"trace|P|10", "ticks", "usrcpu", "portno", "user_ticks|3", "shared_object|lib.so",
                "subroutine_call|MAIN SUB", "ticks_index", "input_count", "bogus", "TRACE|P|10",
                "perform|ticks|5|cmd", "PID", ""},
               {
                   {{"3"}, "3"},
                   {{"3", "4"}, "7"},
                   {{"3", "4", "5"}, "12"},
                   {{"007"}, "007"},
                   {{"007", "1"}, "8"},
                   {{"1.5", "1.5"}, "3"},
                   {{"5", "-7"}, "-2"},
                   {{"5", "abc"}, "5"},
                   {{"abc"}, "abc"},
                   {{"LIST", "LIST"}, "0"},
                   {{"LIST", "WHO", "5"}, "5"},
                   {{""}, ""},
                   {{"", ""}, "0"},
               });
}

TEST(ProfileMerge, DropsWhatIsOfOneRunOnly) {
  for (const std::string_view type : {"pid", "ppid", "typerate", "resource", "input", "program"}) {
    ProfileMerge merge;
    merge.AddLines("PROFILE:" + std::string(type) + "\t5\n");
    merge.AddLines("PROFILE:" + std::string(type) + "\ta\tb\t5\n");
    EXPECT_TRUE(merge.Empty()) << type;
    merge.AddLines("PROFILE:ticks\t5\n");
    EXPECT_FALSE(merge.Empty());
    EXPECT_EQ(Text(merge), "PROFILE:ticks\t5\n") << type;
  }
}

TEST(ProfileMerge, PassesOverOtherLines) {
  const std::vector<std::string_view> lines = {
      "",
      "PROFILE:ticks",
      "PROFILE:",
      "a line",
      "a|line",
      "|",
      "profile:ticks|5",
      " PROFILE:ticks|5",
      "|PROFILE:ticks|5",
      "xPROFILE:ticks|5",
      "PROFILE|ticks|5",
      "PROFIL|E:ticks|5",
  };
  for (const std::string_view line : lines) {
    ProfileMerge merge;
    merge.AddLines(Tabs(line) + "\n");
    EXPECT_TRUE(merge.Empty()) << line;
    EXPECT_EQ(merge.Next(), "") << line;
  }
}

// Keys are the whole line but its last field, compared byte by byte.
TEST(ProfileMerge, TellsKeysApart) {
  const std::vector<std::vector<std::string_view>> apart = {
      {"PROFILE:trace|P|10|3", "PROFILE:trace|P|11|3"},
      {"PROFILE:trace|P|10|3", "PROFILE:trace|Q|10|3"},
      {"PROFILE:trace|P|10|3", "PROFILE:trace|p|10|3"},
      {"PROFILE:trace|P|10|3", "PROFILE:trace|P|010|3"},
      {"PROFILE:trace|P|10|3", "PROFILE:TRACE|P|10|3"},
      {"PROFILE:trace|P|10|3", "PROFILE:trace||P|10|3"},
      {"PROFILE:trace|P|10|3", "PROFILE:trace|P|10||3"},
      {"PROFILE:trace|P|10|3", "PROFILE:trace|P|10|3|"},
      {"PROFILE:trace|P|10|3", "PROFILE:trace|P |10|3"},
      {"PROFILE:user_ticks|3|5", "PROFILE:user_ticks|4|5"},
      {"PROFILE:subroutine_call|A SUB|5", "PROFILE:subroutine_call|B SUB|5"},
      {"PROFILE:perform|ticks|5|cmd|LIST", "PROFILE:perform|ticks|6|cmd|LIST"},
      {"PROFILE:hertz|100", "PROFILE:hertz|100|100"},
      {"PROFILE:startclock|100", "PROFILE:startclock:2|90"},
  };
  for (const auto& lines : apart) {
    std::string want;
    for (const std::string_view line : lines) {
      want += Tabs(line) + "\n";
    }
    EXPECT_EQ(Merged(lines), want);
  }
}

// The type is what stands behind the first colon, up to the next one or to the end of its field.
TEST(ProfileMerge, KnowsTheTypeBetweenColons) {
  EXPECT_EQ(Merged({"PROFILE:startclock:x|100", "PROFILE:startclock:x|90"}),
            Tabs("PROFILE:startclock:x|90\n"));
  EXPECT_EQ(Merged({"PROFILE:pid:|5", "PROFILE:pid:x:y|5"}), "");
  EXPECT_EQ(Merged({"PROFILE:ticks|a:pid|5", "PROFILE:ticks|a:pid|5"}),
            Tabs("PROFILE:ticks|a:pid|10\n"));
  EXPECT_EQ(Merged({"PROFILE::pid|5", "PROFILE::pid|5"}), Tabs("PROFILE::pid|10\n"));
}

TEST(ProfileMerge, KeepsTheOrderOfFirstAppearance) {
  EXPECT_EQ(Merged({"PROFILE:trace|P|10|3", "PROFILE:startclock|100", "PROFILE:trace|P|11|5",
                    "PROFILE:program|P", "PROFILE:startclock|90", "PROFILE:ticks|8",
                    "PROFILE:trace|P|10|4", "PROFILE:ticks|7"}),
            Tabs("PROFILE:trace|P|10|7\nPROFILE:startclock|90\nPROFILE:trace|P|11|5\n"
                 "PROFILE:ticks|15\n"));
}

TEST(ProfileMerge, HandsOutAnyNumberOfLines) {
  ProfileMerge merge;
  std::string want;
  for (int line = 1; line <= 50000; ++line) {
    const std::string key = "PROFILE:trace\tPROGRAM\t" + std::to_string(line) + "\t";
    merge.AddLines(key + "1" + "\n");
    want += key + "3\n";
  }
  for (int line = 50000; line >= 1; --line) {
    merge.AddLines("PROFILE:trace\tPROGRAM\t" + std::to_string(line) + "\t2\n");
  }
  EXPECT_TRUE(Text(merge) == want);
  EXPECT_EQ(merge.Next(), "");
}

TEST(ProfileMerge, HasReadableBytesBehindItsBlocks) {
  ProfileMerge merge;
  merge.AddLines("PROFILE:ticks\t5\n");
  const std::string_view block = merge.Next();
  EXPECT_EQ(std::string(block.data() + block.size(), kBlockPadding).size(), kBlockPadding);
}

TEST(ProfileMerge, RemembersTheFirstName) {
  ProfileMerge merge;
  EXPECT_EQ(merge.FirstName(), "");
  merge.NoteName("a/run1");
  merge.NoteName("run2");
  EXPECT_EQ(merge.FirstName(), "a/run1");
}

}  // namespace
}  // namespace ptick
