#include "profile/ticks/tick_entries.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "profile/ticks/sort_order.h"

namespace ptick {

namespace {

constexpr SortOrder kAscending = SortOrder::kAscending;
constexpr SortOrder kDescending = SortOrder::kDescending;

/// The entries as TakeOrdered must give them.
std::vector<TickEntry> Ordered(std::vector<TickEntry> entries, SortOrder order) {
  std::ranges::reverse(entries);
  std::ranges::stable_sort(entries, [order](const TickEntry& a, const TickEntry& b) {
    return order == kAscending ? a.ticks < b.ticks : a.ticks > b.ticks;
  });
  return entries;
}

TickEntries Collect(const std::vector<TickEntry>& entries) {
  TickEntries collected;
  for (const TickEntry& entry : entries) {
    collected.Add(entry);
  }
  return collected;
}

/// The first entry in which both differ, as text; empty when there is none.
std::string Difference(const TickEntryBlock& got, const std::vector<TickEntry>& want) {
  if (got.Entries().size() != want.size()) {
    return "sizes " + std::to_string(got.Entries().size()) + ", " + std::to_string(want.size());
  }
  for (std::size_t i = 0; i < want.size(); ++i) {
    const TickEntry& entry = got.Entries()[i];
    if (entry.program != want[i].program || entry.line != want[i].line ||
        entry.ticks != want[i].ticks) {
      return "entry " + std::to_string(i) + ": line " + std::to_string(entry.line) + ", wanted " +
             std::to_string(want[i].line);
    }
  }
  return "";
}

TEST(TickEntries, PutEqualTicksInReverseOrderOfArrival) {
  struct Row {
    SortOrder order;
    std::vector<std::uint32_t> want_lines;
  };
  // Lines are numbered in order of arrival.
  const std::vector<TickEntry> entries = {{1, 1, 5}, {0, 2, 5}, {1, 3, 7}, {1, 4, 0}, {0, 5, 5}};
  const std::vector<Row> rows = {
      {kDescending, {3, 5, 2, 1, 4}},
      {kAscending, {4, 5, 2, 1, 3}},
  };
  for (const Row& row : rows) {
    const TickEntryBlock ordered = Collect(entries).TakeOrdered(row.order);
    std::vector<std::uint32_t> lines;
    for (const TickEntry& entry : ordered.Entries()) {
      lines.push_back(entry.line);
    }
    EXPECT_EQ(lines, row.want_lines);
  }
}

// Sizes around a chunk, and keys of one digit and of several, at the bounds of the digits.
TEST(TickEntries, OrderAnyNumberOfEntriesByKeysOfAnyWidth) {
  struct Row {
    std::size_t count;
    std::uint32_t most_ticks;
  };
  const std::vector<Row> rows = {
      {1, 0},
      {2, 0},
      {100, 0},
      {100, 1},
      {1000, 2047},
      {1000, 2048},
      {3000, (1U << 22U) - 1},
      {3000, 1U << 22U},
      {3000, std::numeric_limits<std::uint32_t>::max()},
      {65535, 50},
      {65536, 50},
      {65537, 50},
      {200000, 5000},
  };
  std::mt19937 random(1);  // the same numbers every time
  for (const Row& row : rows) {
    std::vector<TickEntry> entries;
    for (std::size_t i = 0; i < row.count; ++i) {
      const auto ticks = static_cast<std::uint32_t>(random() % (std::uint64_t{row.most_ticks} + 1));
      entries.push_back({0, static_cast<std::uint32_t>(i), ticks});
    }
    entries.back().ticks = row.most_ticks;
    for (const SortOrder order : {kAscending, kDescending}) {
      EXPECT_EQ(Difference(Collect(entries).TakeOrdered(order), Ordered(entries, order)), "")
          << row.count << " entries of up to " << row.most_ticks << " ticks";
    }
  }
}

TEST(TickEntries, LeaveNothingBehind) {
  TickEntries entries;
  EXPECT_TRUE(entries.TakeOrdered(kDescending).Entries().empty());
  entries.Add({0, 1, 5});
  EXPECT_EQ(entries.TakeOrdered(kDescending).Entries().size(), 1U);
  EXPECT_TRUE(entries.TakeOrdered(kDescending).Entries().empty());
  entries.Add({0, 2, 6});
  const TickEntryBlock ordered = entries.TakeOrdered(kDescending);
  ASSERT_EQ(ordered.Entries().size(), 1U);
  EXPECT_EQ(ordered.Entries().front().line, 2U);
}

TEST(TickEntries, TellExactTextsFromNumbers) {
  const TickEntry number{0, TickEntry::kExactText - 1, 0};
  EXPECT_FALSE(number.HasExactText());
  const TickEntry text{0, TickEntry::kExactText + 17, 0};
  EXPECT_TRUE(text.HasExactText());
  EXPECT_EQ(text.ExactIndex(), 17U);
}

}  // namespace

}  // namespace ptick
