// What becomes of the lines when merges are merged, as docs/scale.md says it: merging groups of
// profiles that follow each other, and then their merged lines, is merging all at once, as long as
// the values are numbers that add up exactly.

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "profile/merge/profile_merge.h"
#include "support/profiles.h"

namespace ptick {

namespace {

using testing::AddLines;
using testing::LinesOf;
using testing::Records;
using testing::Tabs;

using Profiles = std::vector<std::string>;

std::string Merged(const Profiles& profiles) {
  ProfileMerge merge;
  for (const std::string& profile : profiles) {
    AddLines(merge, profile);
  }
  return LinesOf(merge);
}

/// Merges each group of profiles: after profile i (from 0) a group ends where bit i of `cuts` is
/// set.
Profiles MergedGroups(const Profiles& profiles, unsigned cuts) {
  Profiles merged;
  Profiles group;
  for (std::size_t i = 0; i < profiles.size(); ++i) {
    group.push_back(profiles[i]);
    if ((cuts >> i & 1U) != 0 || i + 1 == profiles.size()) {
      merged.push_back(Merged(group));
      group.clear();
    }
  }
  return merged;
}

/// Runs with records of every kind, keys that come and go, equal values spelled in several ways,
/// and lines that no merge takes.
Profiles Runs() {
  return {
      Records({"program|DESK 4", "pid|4711", "hertz|100", "startclock|500", "starttime|0090",
               "trace|A|1|3", "trace|A|2|5", "usrcpu|1.25", "perform|type|qry|cmd|LIST"}),
      Records({"starttime|90", "trace|B|7|1", "trace|A|2|0007", "endclock|900", "memused|10",
               "shared_object|x.so|1", "input|13|1|5|6|y", "startclock:b|5", "startclock:c|b"}),
      Records({"hertz|1000", "startclock|-20", "trace|A|1|9007199254740993", "memused|9",
               "user_ticks|3|-4", "perform|type|qry|cmd|SORT", "usrcpu|0.0001"}),
      "a remark\nPROFILE:ticks\n\tPROFILE:ticks\t5\n",
      Records({"trace|C|1|1", "endclock|", "memused|010", "usrcpu|2", "TRACE|A|1|3",
               "trace:x|A|1|3", "portno|14", "pagesize|4096", "startclock:b|", "startclock:c|a",
               "resource|1|2|3"}),
      Records({"trace|A|1|1", "endclock|950", "starttime|089.50", "perform|type|qry|cmd|LIST",
               "hertz|", "pagesize|x", "user_ticks|3|4", "typerate|5|6", "TRACE|A|1|3"}),
      Records({"trace|B|7|", "startclock:b|4", "startclock:c|c", "memused|10.0", "usrcpu|-0.25",
               "portno|3", "starttime|89.5"}),
  };
}

TEST(MergeOfMerges, IsTheMergeOfAllAtOnce) {
  const Profiles runs = Runs();
  const std::string at_once = Merged(runs);
  ASSERT_FALSE(at_once.empty());
  for (unsigned cuts = 0; cuts < 1U << (runs.size() - 1); ++cuts) {
    const Profiles groups = MergedGroups(runs, cuts);
    EXPECT_EQ(Merged(groups), at_once) << "cuts " << cuts;
    for (unsigned more_cuts = 0; more_cuts < 1U << (groups.size() - 1); ++more_cuts) {
      EXPECT_EQ(Merged(MergedGroups(groups, more_cuts)), at_once) << cuts << ", " << more_cuts;
    }
  }
}

// So profiles may be strung together before they are merged.
TEST(MergeOfMerges, KnowsNoBoundsOfProfiles) {
  std::string strung;
  for (const std::string& run : Runs()) {
    strung += run;
  }
  EXPECT_EQ(Merged({strung}), Merged(Runs()));
  EXPECT_EQ(Merged({strung, ""}), Merged(Runs()));
}

TEST(MergeOfMerges, LeavesMergedLinesAsTheyAre) {
  const std::string once = Merged(Runs());
  EXPECT_EQ(Merged({once}), once);
}

constexpr unsigned kCutBehindTheFirst = 1;

/// Three profiles of one line each, merged at once, and with the last two merged first.
struct Row {
  std::string_view record_type;
  std::vector<std::string_view> values;
  std::string_view at_once;
  std::string_view last_two_first;
};

Profiles LinesOfValues(const Row& row) {
  Profiles profiles;
  for (const std::string_view value : row.values) {
    profiles.push_back(Records({std::string(row.record_type) + "|" + std::string(value)}));
  }
  return profiles;
}

// Texts among numbers have no order: 9 < 10, but as texts "10" < "5x" and "5x" < "9". More decimals
// than four are cut after each sum, and beyond 64 bits sums are rounded.
TEST(MergeOfMerges, DiffersWhereValuesHaveNoOrderOrDoNotAddUpExactly) {
  const std::vector<Row> rows = {
      {"startclock", {"10", "5x", "9"}, "9", "10"},
      {"endclock", {"9", "5x", "10"}, "10", "9"},
      {"usrcpu", {"1", "0.00006", "0.00006"}, "1", "1.0001"},
      {"ticks", {"9223372036854775807", "1", "-1"}, "9223372036854775808", "9223372036854775807"},
  };
  for (const Row& row : rows) {
    const Profiles profiles = LinesOfValues(row);
    const std::string key = "PROFILE:" + std::string(row.record_type) + "\t";
    EXPECT_EQ(Merged(profiles), key + std::string(row.at_once) + "\n") << row.values[0];
    EXPECT_EQ(Merged(MergedGroups(profiles, kCutBehindTheFirst)),
              key + std::string(row.last_two_first) + "\n")
        << row.values[0];
    EXPECT_NE(row.at_once, row.last_two_first) << row.values[0];
  }
}

// Another order gives the same sums, smallest and largest values, but other last values, another
// order of lines, and another spelling where equal numbers are spelled in several ways.
TEST(MergeOfMerges, DependsOnTheOrderOfProfiles) {
  const Profiles runs = {Records({"hertz|100", "trace|A|1|3", "starttime|090", "endtime|7"}),
                         Records({"starttime|90", "trace|B|1|1", "trace|A|1|4", "hertz|50"})};
  EXPECT_EQ(Merged(runs), Tabs("PROFILE:hertz|50\nPROFILE:trace|A|1|7\nPROFILE:starttime|090\n"
                               "PROFILE:endtime|7\nPROFILE:trace|B|1|1\n"));
  EXPECT_EQ(Merged({runs[1], runs[0]}),
            Tabs("PROFILE:starttime|90\nPROFILE:trace|B|1|1\nPROFILE:trace|A|1|7\n"
                 "PROFILE:hertz|100\nPROFILE:endtime|7\n"));
}

TEST(MergeOfMerges, DropsTheSameRecordsAtEveryStep) {
  const std::string runs = Records(
      {"program|A", "pid|1", "ppid|1", "typerate|1|2", "resource|1", "input|13|0|1|2|", "ticks|5"});
  EXPECT_EQ(Merged({runs}), Tabs("PROFILE:ticks|5\n"));
  EXPECT_EQ(Merged({Merged({runs}), runs}), Tabs("PROFILE:ticks|10\n"));
}

}  // namespace

}  // namespace ptick
