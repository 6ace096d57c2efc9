// How lines of equal keys are combined: by the type of their record.

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "profile/merge/profile_merge.h"
#include "support/profiles.h"

namespace ptick {

namespace {

using testing::AddLines;
using testing::LinesOf;

TEST(MergeKind, IsThatOfTheType) {
  for (const RecordType& type : RecordTypes()) {
    EXPECT_EQ(MergeKindOf(type.name), type.merge) << type.name;
  }
}

// Unlike the parser, a merge compares names exactly.
TEST(MergeKind, IsAddedForAllOtherNames) {
  const std::vector<std::string_view> names = {
      "bogus", "", "PID", "Hertz", "STARTCLOCK", "pid ", " pid", "startclock2", "inputs"};
  for (const std::string_view name : names) {
    EXPECT_EQ(MergeKindOf(name), MergeKind::kAdded) << name;
  }
}

struct Row {
  std::vector<std::string_view> values;
  std::string_view want;
};

/// Merges lines of the types that differ in nothing but their value.
void ExpectMerged(std::initializer_list<std::string_view> types, const std::vector<Row>& rows) {
  for (const std::string_view type : types) {
    for (const Row& row : rows) {
      ProfileMerge merge;
      const std::string key = "PROFILE:" + testing::Tabs(type) + "\t";
      for (const std::string_view value : row.values) {
        AddLines(merge, key + std::string(value) + "\n");
      }
      EXPECT_EQ(LinesOf(merge), key + std::string(row.want) + "\n")
          << type << " from " << row.values.front();
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

}  // namespace

}  // namespace ptick
