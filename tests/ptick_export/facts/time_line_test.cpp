#include "ptick_export/facts/time_line.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "support/profiles.h"

namespace ptick::exports {

namespace {

using ptick::testing::Parse;
using ptick::testing::Records;

/// Spans as "index:begin-end@track".
std::string Texts(const TimeTracks& line) {
  std::string text;
  for (const TimeSpan& span : line.spans) {
    text += (text.empty() ? "" : " ") + std::to_string(span.index) + ":" +
            std::to_string(span.begin) + "-" + std::to_string(span.end) + "@" +
            std::to_string(span.track);
  }
  return text;
}

std::string Performed(std::string_view start, std::string_view end) {
  return "PROFILE:perform\tstartclock\t" + std::string(start) + "\tendclock\t" + std::string(end) +
         "\tcmd\tX\n";
}

TEST(TimeLine, CountsNanosecondsFromTheStartClock) {
  struct Row {
    std::string head;
    std::string start;
    std::string end;
    std::string want;
  };
  const std::vector<Row> rows = {
      {"hertz|100 startclock|500", "500", "600", "0:0-1000000000@0"},
      {"hertz|100 startclock|0", "500", "600", "0:5000000000-6000000000@0"},
      {"hertz|100", "500", "600", "0:0-1000000000@0"},
      {"hertz|100 startclock|x", "500", "600", "0:0-1000000000@0"},
      {"hertz|100 startclock|600", "500", "600", "0:-1000000000-0@0"},
      {"hertz|3 startclock|0", "1", "2", "0:333333333-666666667@0"},
      {"hertz|3 startclock|2", "1", "0.5", ""},
      {"hertz|3 startclock|3", "1", "2", "0:-666666667--333333333@0"},
      {"hertz|2.5 startclock|0", "1", "2", "0:400000000-800000000@0"},
      {"hertz|100 startclock|0.5", "1.5", "2.25", "0:10000000-17500000@0"},
      {"hertz|1000000000 startclock|0", "4611686018427387904", "4611686018427387904",
       "0:4611686018427387904-4611686018427387904@0"},
      {"hertz|1000000000 startclock|0", "1", "4611686018427387905", ""},
  };
  for (const Row& row : rows) {
    std::string profile;
    for (std::size_t at = 0; at < row.head.size();) {
      const std::size_t end = std::min(row.head.find(' ', at), row.head.size());
      profile += "PROFILE:" + ptick::testing::Tabs(row.head.substr(at, end - at)) + "\n";
      at = end + 1;
    }
    profile += Performed(row.start, row.end);
    const auto parsed = Parse(profile);
    EXPECT_EQ(Texts(MakeTimeLine(*parsed.tables, {}).commands), row.want) << profile;
  }
}

TEST(TimeLine, IsThereWithHertzOnly) {
  for (const std::string_view hertz : {"", "0", "-1", "abc"}) {
    const auto parsed = Parse("PROFILE:hertz\t" + std::string(hertz) + "\n" + Performed("1", "2"));
    const TimeLine time_line = MakeTimeLine(*parsed.tables, {});
    EXPECT_FALSE(time_line.has_hertz) << hertz;
    EXPECT_EQ(Texts(time_line.commands), "") << hertz;
  }
}

TEST(TimeLine, BeginsWithTheEarliestClockOnIt) {
  const auto parsed = Parse(Records({"hertz|1", "perform|startclock|50|endclock|60|cmd|A",
                                     "perform|startclock|5|cmd|B", "input|13|1|40|45|x"}));
  const TimeLine time_line = MakeTimeLine(*parsed.tables, {.commands = true, .inputs = false});
  EXPECT_EQ(Texts(time_line.commands), "0:0-10000000000@0");
  EXPECT_EQ(Texts(time_line.inputs), "");
  const TimeLine both = MakeTimeLine(*parsed.tables, {});
  EXPECT_EQ(Texts(both.commands), "0:10000000000-20000000000@0");
  EXPECT_EQ(Texts(both.inputs), "0:0-5000000000@0");
}

TEST(TimeLine, CountsWhatHasNoPlaceOnIt) {
  const auto parsed = Parse(Records({
      "hertz|1",
      "startclock|0",
      "perform|startclock|1|cmd|A",
      "perform|endclock|1|cmd|A",
      "perform|startclock|1|endclock|x|cmd|A",
      "perform|startclock|2|endclock|1|cmd|A",
      "perform|startclock|2|endclock|99999999999999999999|cmd|A",
      "perform|startclock|2|endclock|3|cmd|A",
      "input|13",
      "input|13|1|5|4|x",
  }));
  const TimeLine time_line = MakeTimeLine(*parsed.tables, {});
  EXPECT_EQ(time_line.commands.without_clocks, 3U);
  EXPECT_EQ(time_line.commands.reversed, 1U);
  EXPECT_EQ(time_line.commands.out_of_range, 1U);
  EXPECT_EQ(Texts(time_line.commands), "5:2000000000-3000000000@0");
  EXPECT_EQ(time_line.inputs.without_clocks, 1U);
  EXPECT_EQ(time_line.inputs.reversed, 1U);
}

TimeTracks Tracks(const std::vector<std::pair<std::int64_t, std::int64_t>>& times) {
  TimeTracks line;
  for (const auto& [begin, end] : times) {
    line.spans.push_back({.begin = begin,
                          .end = end,
                          .index = static_cast<std::uint32_t>(line.spans.size()),
                          .track = 0});
  }
  AssignTracks(line);
  return line;
}

TEST(TimeTracks, PartWhatCrosses) {
  struct Row {
    std::vector<std::pair<std::int64_t, std::int64_t>> times;
    std::string want;
  };
  const std::vector<Row> rows = {
      {{}, ""},
      {{{5, 6}, {1, 2}}, "1:1-2@0 0:5-6@0"},
      {{{1, 2}, {2, 3}}, "0:1-2@0 1:2-3@0"},
      {{{2, 3}, {1, 9}}, "1:1-9@0 0:2-3@0"},
      {{{1, 5}, {1, 9}, {1, 9}}, "1:1-9@0 2:1-9@0 0:1-5@0"},
      {{{1, 5}, {3, 9}}, "0:1-5@0 1:3-9@1"},
      {{{1, 5}, {3, 9}, {4, 12}, {6, 7}}, "0:1-5@0 1:3-9@1 3:6-7@1 2:4-12@2"},
      {{{1, 5}, {3, 9}, {9, 10}}, "0:1-5@0 2:9-10@0 1:3-9@1"},
      {{{4, 4}, {4, 4}, {4, 8}, {8, 8}}, "2:4-8@0 0:4-4@0 1:4-4@0 3:8-8@0"},
      {{{-5, 5}, {-9, 0}}, "1:-9-0@0 0:-5-5@1"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Texts(Tracks(row.times)), row.want);
  }
}

TEST(TimeTracks, NestOnEachTrack) {
  std::mt19937 random(3);
  std::uniform_int_distribution<std::int64_t> moment(0, 60);
  for (int round = 0; round < 200; ++round) {
    TimeTracks line;
    for (std::uint32_t n = 0; n < 40; ++n) {
      const std::int64_t begin = moment(random);
      line.spans.push_back(
          {.begin = begin, .end = begin + moment(random) / 3, .index = n, .track = 0});
    }
    AssignTracks(line);
    ASSERT_EQ(line.spans.size(), 40U);
    for (std::size_t a = 0; a < line.spans.size(); ++a) {
      ASSERT_LT(line.spans[a].track, line.tracks);
      for (std::size_t b = a + 1; b < line.spans.size(); ++b) {
        const TimeSpan& first = line.spans[a];
        const TimeSpan& second = line.spans[b];
        ASSERT_LE(first.track, second.track);
        if (first.track == second.track) {
          ASSERT_LE(first.begin, second.begin);
          ASSERT_TRUE(second.begin >= first.end || second.end <= first.end) << Texts(line);
        }
      }
    }
  }
}

// Every span crosses every other: each begins a track, and none may cost a look at all the others.
TEST(TimeTracks, TakeNoLongerWhereAllCross) {
  TimeTracks line;
  constexpr std::uint32_t kSpans = 200'000;
  for (std::uint32_t n = 0; n < kSpans; ++n) {
    line.spans.push_back({.begin = n, .end = std::int64_t{kSpans} + n, .index = n, .track = 0});
  }
  AssignTracks(line);
  EXPECT_EQ(line.tracks, kSpans);
  EXPECT_EQ(line.spans.back().track, kSpans - 1);
}

}  // namespace

}  // namespace ptick::exports
