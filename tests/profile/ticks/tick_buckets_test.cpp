#include "profile/ticks/tick_buckets.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace ptick {

namespace {

std::string EntryText(const TickEntry& entry) {
  return std::to_string(entry.program) + "|" + std::to_string(entry.line) + "|" +
         std::to_string(entry.ticks);
}

// All entries of a tick count, the last first, taken `most` at a time.
std::vector<std::string> Entries(const TickBuckets& buckets, std::uint32_t ticks,
                                 std::size_t most = 1000) {
  std::vector<std::string> texts;
  TickBuckets::Backwards walk(buckets, ticks);
  for (auto slots = walk.Next(most); !slots.empty(); slots = walk.Next(most)) {
    EXPECT_LE(slots.size(), most);
    for (std::size_t i = slots.size(); i-- > 0;) {
      texts.push_back(EntryText({slots[i].program, slots[i].line, ticks}));
    }
  }
  return texts;
}

TEST(TickBuckets, KeepTickCountsApartTheLastEntryFirst) {
  TickBuckets buckets;
  for (const TickEntry& entry :
       std::vector<TickEntry>{{1, 10, 5}, {2, 20, 5}, {3, 30, 0}, {1, 10, 4095}, {4, 7, 5}}) {
    buckets.Add(entry);
  }
  using Texts = std::vector<std::string>;
  EXPECT_EQ(Entries(buckets, 5), (Texts{"4|7|5", "2|20|5", "1|10|5"}));
  EXPECT_EQ(Entries(buckets, 0), Texts{"3|30|0"});
  EXPECT_EQ(Entries(buckets, 4095), Texts{"1|10|4095"});
  EXPECT_EQ(Entries(buckets, 4), Texts{});
}

// Sizes around the ends of chunks of 16, 32, ... and 512 slots, and enough for several pieces.
TEST(TickBuckets, HoldAnyNumberOfEntries) {
  for (const std::size_t count :
       std::vector<std::size_t>{1, 15, 16, 17, 47, 48, 49, 1007, 1008, 1009, 1520, 300000}) {
    TickBuckets buckets;
    for (std::size_t i = 0; i < count; ++i) {
      buckets.Add({static_cast<NameTable::Id>(i % 7), static_cast<std::uint32_t>(i), 3});
    }
    EXPECT_EQ(buckets.CountOf(3), count);
    for (const std::size_t most : {7U, 512U, 1000U}) {
      std::size_t left = count;
      for (const std::string& entry : Entries(buckets, 3, most)) {
        --left;
        ASSERT_EQ(entry, std::to_string(left % 7) + "|" + std::to_string(left) + "|3");
      }
      EXPECT_EQ(left, 0U) << count;
    }
  }
}

TEST(TickBuckets, FillInAnyOrder) {
  TickBuckets buckets;
  std::vector<std::vector<std::string>> want(TickBuckets::kCount);
  std::mt19937 random(1);  // the same numbers every time
  for (std::uint32_t line = 0; line < 200000; ++line) {
    const auto ticks = static_cast<std::uint32_t>(random() % 4 == 0 ? random() % 4096 : 1);
    const TickEntry entry = {line % 3, line, ticks};
    buckets.Add(entry);
    want[ticks].push_back(EntryText(entry));
  }
  for (std::uint32_t ticks = 0; ticks < TickBuckets::kCount; ++ticks) {
    std::ranges::reverse(want[ticks]);
    ASSERT_EQ(Entries(buckets, ticks), want[ticks]) << ticks;
  }
}

}  // namespace

}  // namespace ptick
