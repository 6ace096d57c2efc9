#include "profile/tick_entries.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace ptick {
namespace {

constexpr LocateOrder kAscending = LocateOrder::kAscending;
constexpr LocateOrder kDescending = LocateOrder::kDescending;

/// The entries as TakeOrdered must give them: every rule one sort, the strongest last.
std::vector<TickEntry> Ordered(std::vector<TickEntry> entries, LocateOrder order,
                               bool per_program) {
  std::ranges::reverse(entries);
  std::ranges::stable_sort(entries, [order](const TickEntry& a, const TickEntry& b) {
    return order == kAscending ? a.Ticks < b.Ticks : a.Ticks > b.Ticks;
  });
  if (per_program) {
    std::ranges::stable_sort(entries, {}, &TickEntry::Program);
  }
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
    if (entry.Program != want[i].Program || entry.Line != want[i].Line ||
        entry.Ticks != want[i].Ticks) {
      return "entry " + std::to_string(i) + ": line " + std::to_string(entry.Line) + ", wanted " +
             std::to_string(want[i].Line);
    }
  }
  return "";
}

TEST(TickEntries, PutEqualTicksInReverseOrderOfArrival) {
  struct Row {
    LocateOrder Order;
    std::size_t ProgramCount;
    std::vector<std::uint32_t> WantLines;
  };
  // Lines are numbered in order of arrival.
  const std::vector<TickEntry> entries = {{1, 1, 5}, {0, 2, 5}, {1, 3, 7}, {1, 4, 0}, {0, 5, 5}};
  const std::vector<Row> rows = {
      {kDescending, 1, {3, 5, 2, 1, 4}},
      {kAscending, 1, {4, 5, 2, 1, 3}},
      {kDescending, 2, {5, 2, 3, 1, 4}},
      {kAscending, 2, {5, 2, 4, 1, 3}},
  };
  for (const Row& row : rows) {
    const TickEntryBlock ordered = Collect(entries).TakeOrdered(row.Order, row.ProgramCount);
    std::vector<std::uint32_t> lines;
    for (const TickEntry& entry : ordered.Entries()) {
      lines.push_back(entry.Line);
    }
    EXPECT_EQ(lines, row.WantLines) << "programs: " << row.ProgramCount;
  }
}

// Sizes around a chunk, and keys of one digit and of several, at the bounds of the digits.
TEST(TickEntries, OrderAnyNumberOfEntriesByKeysOfAnyWidth) {
  struct Row {
    std::size_t Count;
    std::uint32_t MostTicks;
    std::size_t ProgramCount;
  };
  const std::vector<Row> rows = {
      {1, 0, 1},
      {2, 0, 1},
      {100, 0, 1},
      {100, 1, 2},
      {1000, 2047, 1},
      {1000, 2048, 3},
      {3000, (1U << 22U) - 1, 1},
      {3000, 1U << 22U, 4},
      {3000, std::numeric_limits<std::uint32_t>::max(), 1},
      {5000, std::numeric_limits<std::uint32_t>::max(), 5},
      {20000, 10, 2047},
      {20000, 10, 2048},
      {20000, 10, 2049},
      {20000, 100000, 5000},
      {65535, 50, 1},
      {65536, 50, 2},
      {65537, 50, 3},
      {200000, 5000, 300},
  };
  std::mt19937 random(1);  // the same numbers every time
  for (const Row& row : rows) {
    std::vector<TickEntry> entries;
    for (std::size_t i = 0; i < row.Count; ++i) {
      const auto program = static_cast<NameTable::Id>(random() % row.ProgramCount);
      const auto ticks = static_cast<std::uint32_t>(random() % (std::uint64_t{row.MostTicks} + 1));
      entries.push_back({program, static_cast<std::uint32_t>(i), ticks});
    }
    entries.back().Ticks = row.MostTicks;
    for (const LocateOrder order : {kAscending, kDescending}) {
      EXPECT_EQ(Difference(Collect(entries).TakeOrdered(order, row.ProgramCount),
                           Ordered(entries, order, row.ProgramCount > 1)),
                "")
          << row.Count << " entries of up to " << row.MostTicks << " ticks";
    }
  }
}

TEST(TickEntries, LeaveNothingBehind) {
  TickEntries entries;
  EXPECT_TRUE(entries.TakeOrdered(kDescending, 1).Entries().empty());
  entries.Add({0, 1, 5});
  EXPECT_EQ(entries.TakeOrdered(kDescending, 1).Entries().size(), 1U);
  EXPECT_TRUE(entries.TakeOrdered(kDescending, 1).Entries().empty());
  entries.Add({0, 2, 6});
  const TickEntryBlock ordered = entries.TakeOrdered(kDescending, 1);
  ASSERT_EQ(ordered.Entries().size(), 1U);
  EXPECT_EQ(ordered.Entries().front().Line, 2U);
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
