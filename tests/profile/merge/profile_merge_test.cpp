#include "profile/merge/profile_merge.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "support/profiles.h"

namespace ptick {

namespace {

using testing::AddLines;
using testing::LinesOf;
using testing::Tabs;

std::string Merged(const std::vector<std::string_view>& lines) {
  ProfileMerge merge;
  std::string block;
  for (const std::string_view line : lines) {
    block += Tabs(line) + "\n";
  }
  AddLines(merge, block);
  return LinesOf(merge);
}

TEST(ProfileMerge, DropsWhatIsOfOneRunOnly) {
  for (const std::string_view type : {"pid", "ppid", "typerate", "resource", "input", "program"}) {
    ProfileMerge merge;
    AddLines(merge, "PROFILE:" + std::string(type) + "\t5\n");
    AddLines(merge, "PROFILE:" + std::string(type) + "\ta\tb\t5\n");
    EXPECT_TRUE(merge.Empty()) << type;
    AddLines(merge, "PROFILE:ticks\t5\n");
    EXPECT_FALSE(merge.Empty());
    EXPECT_EQ(LinesOf(merge), "PROFILE:ticks\t5\n") << type;
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
    AddLines(merge, Tabs(line) + "\n");
    EXPECT_TRUE(merge.Empty()) << line;
    EXPECT_EQ(LinesOf(merge), "") << line;
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

// The type is what follows the first colon, up to the next one or to the end of its field.
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

/// The numbers from `first` to `last`, up or down.
std::vector<int> NumbersFrom(int first, int last) {
  std::vector<int> numbers;
  for (int n = first; n != last; n += first < last ? 1 : -1) {
    numbers.push_back(n);
  }
  numbers.push_back(last);
  return numbers;
}

/// Which lines are trace lines; the others are calls.
enum class Traces { kAll, kNone, kEveryThird };

/// The key of a number, with the TAB after it.
std::string KeyText(int key, Traces traces) {
  const bool is_trace = traces == Traces::kAll || (traces == Traces::kEveryThird && key % 3 == 0);
  return (is_trace ? "PROFILE:trace\tP\t" : "PROFILE:subroutine_call\tP Q") + std::to_string(key) +
         "\t";
}

/// Merges lines with the keys of these numbers, `at_once` of them in a block, each with the
/// value 1.
std::string MergedKeys(const std::vector<int>& keys, Traces traces, std::size_t at_once) {
  ProfileMerge merge;
  for (std::size_t begin = 0; begin < keys.size(); begin += at_once) {
    std::string block;
    for (std::size_t i = begin; i < std::min(keys.size(), begin + at_once); ++i) {
      block += KeyText(keys[i], traces) + "1\n";
    }
    AddLines(merge, block);
  }
  return LinesOf(merge);
}

// Lines are taken in many at a time, and those of a profile like the one before in its order.
TEST(ProfileMerge, CombinesLinesHoweverTheyFollowEachOther) {
  const std::vector<std::vector<std::vector<int>>> rows = {
      {NumbersFrom(1, 40), NumbersFrom(1, 40)},
      {NumbersFrom(1, 40), NumbersFrom(40, 1)},
      {NumbersFrom(1, 31), NumbersFrom(1, 1), NumbersFrom(31, 31)},
      {NumbersFrom(1, 32), NumbersFrom(1, 1), NumbersFrom(32, 32)},
      {NumbersFrom(1, 33), NumbersFrom(1, 1), NumbersFrom(33, 33), NumbersFrom(2, 2)},
      {NumbersFrom(1, 1), NumbersFrom(1, 1), NumbersFrom(2, 2), NumbersFrom(1, 1)},
      {NumbersFrom(5, 5), NumbersFrom(7, 7), NumbersFrom(5, 5), NumbersFrom(6, 6),
       NumbersFrom(7, 7), NumbersFrom(8, 8)},
      {NumbersFrom(1, 20), NumbersFrom(10, 30), NumbersFrom(1, 40), NumbersFrom(50, 45),
       NumbersFrom(1, 100), NumbersFrom(100, 1)},
  };
  for (const auto& row : rows) {
    std::vector<int> keys;
    for (const std::vector<int>& run : row) {
      keys.insert(keys.end(), run.begin(), run.end());
    }
    for (const Traces traces : {Traces::kAll, Traces::kNone, Traces::kEveryThird}) {
      std::string want;
      for (auto key = keys.begin(); key != keys.end(); ++key) {
        if (std::find(keys.begin(), key, *key) == key) {
          want += KeyText(*key, traces) + std::to_string(std::ranges::count(keys, *key)) + "\n";
        }
      }
      for (const std::size_t at_once : {1U, 2U, 7U, 32U, 33U, 1000U}) {
        EXPECT_EQ(MergedKeys(keys, traces, at_once), want) << ::testing::PrintToString(keys);
      }
    }
  }
}

// Beyond 64 bits a sum depends on the order of what is added: it stays that of the lines, also
// where one is found at once while others wait.
TEST(ProfileMerge, AddsInTheOrderOfTheLines) {
  EXPECT_EQ(Merged({"PROFILE:hertz|1", "PROFILE:trace|P|1|5",
                    "PROFILE:trace|P|2|9223372036854775807", "PROFILE:hertz|1",
                    "PROFILE:trace|P|2|1500", "PROFILE:trace|P|1|1", "PROFILE:trace|P|2|1024"}),
            Tabs("PROFILE:hertz|1\nPROFILE:trace|P|1|6\n"
                 "PROFILE:trace|P|2|9223372036854779904\n"));
  EXPECT_EQ(
      Merged({"PROFILE:delete_count|1", "PROFILE:read_count|5",
              "PROFILE:write_count|9223372036854775807", "PROFILE:delete_count|1",
              "PROFILE:write_count|1500", "PROFILE:read_count|1", "PROFILE:write_count|1024"}),
      Tabs("PROFILE:delete_count|2\nPROFILE:read_count|6\n"
           "PROFILE:write_count|9223372036854779904\n"));
}

// A key may come again before its first value is looked up.
TEST(ProfileMerge, CombinesTextsInTheOrderOfTheLines) {
  EXPECT_EQ(Merged({"PROFILE:perform|cmd|A", "PROFILE:perform|cmd|5", "PROFILE:perform|x|B",
                    "PROFILE:hertz|b", "PROFILE:startclock|20", "PROFILE:hertz|a",
                    "PROFILE:perform|cmd|C", "PROFILE:startclock|30", "PROFILE:startclock|3"}),
            Tabs("PROFILE:perform|cmd|5\nPROFILE:perform|x|B\nPROFILE:hertz|a\n"
                 "PROFILE:startclock|3\n"));
}

TEST(ProfileMerge, HandsOutAnyNumberOfLines) {
  ProfileMerge merge;
  std::string want;
  for (int line = 1; line <= 50000; ++line) {
    const std::string key = "PROFILE:trace\tPROGRAM\t" + std::to_string(line) + "\t";
    AddLines(merge, key + "1\n");
    want += key + "3\n";
  }
  for (int line = 50000; line >= 1; --line) {
    AddLines(merge, "PROFILE:trace\tPROGRAM\t" + std::to_string(line) + "\t2\n");
  }
  MergedLines merged = merge.TakeLines();
  EXPECT_TRUE(LinesOf(merged) == want);
  EXPECT_EQ(merged.Next(), "");
}

// More programs than are looked up without preparation.
TEST(ProfileMerge, AddsUpTheLinesOfManyPrograms) {
  constexpr int kPrograms = 12000;
  const auto lines = [](bool backwards, std::string_view ticks) {
    std::string text;
    for (int i = 0; i < kPrograms; ++i) {
      const int program = backwards ? kPrograms - 1 - i : i;
      text += "PROFILE:trace\tPROGRAM." + std::to_string(program) + "\t7\t";
      text.append(ticks).append("\n");
    }
    return text;
  };
  ProfileMerge merge;
  AddLines(merge, lines(false, "1"));
  AddLines(merge, lines(true, "2"));
  AddLines(merge, lines(true, "4"));
  EXPECT_TRUE(LinesOf(merge) == lines(false, "7"));
}

TEST(ProfileMerge, HasReadableBytesAfterItsBlocks) {
  ProfileMerge merge;
  AddLines(merge, "PROFILE:ticks\t5\n");
  MergedLines merged = merge.TakeLines();
  const std::string_view block = merged.Next();
  EXPECT_EQ(std::string(block.data() + block.size(), kBlockPadding).size(), kBlockPadding);
}

}  // namespace

}  // namespace ptick
