#include "profile/ticks/ordered_ticks.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "profile/ticks/sort_order.h"
#include "support/profiles.h"

namespace ptick {

namespace {

using testing::RowTexts;

constexpr SortOrder kAscending = SortOrder::kAscending;
constexpr SortOrder kDescending = SortOrder::kDescending;

/// An entry, as "program|line|ticks".
using Entry = std::string_view;

TickTable MakeTable(const std::vector<Entry>& entries) {
  TickTable table;
  for (const Entry& entry : entries) {
    const std::size_t line = entry.find('|') + 1;
    const std::size_t ticks = entry.find('|', line) + 1;
    table.Add(entry.substr(0, line - 1), entry.substr(line, ticks - 1 - line), entry.substr(ticks));
  }
  return table;
}

/// What entries are in both orders.
struct Ordered {
  std::vector<Entry> entries;
  std::string_view want_descending;
  std::string_view want_ascending;
};

void ExpectOrders(const std::vector<Ordered>& rows, bool per_program) {
  for (const Ordered& row : rows) {
    EXPECT_EQ(RowTexts(MakeTable(row.entries), kDescending, per_program), row.want_descending);
    EXPECT_EQ(RowTexts(MakeTable(row.entries), kAscending, per_program), row.want_ascending);
  }
}

TEST(OrderedTicks, HasOneEmptyRowWithoutEntries) {
  for (const SortOrder order : {kAscending, kDescending}) {
    const OrderedTicks all(TickTable(), order, false);
    EXPECT_EQ(all.RowCount(), 1U);
    EXPECT_EQ(RowTexts(all), "");
    EXPECT_EQ(OrderedTicks(TickTable(), order, true).RowCount(), 0U);
  }
}

TEST(OrderedTicks, OrdersAllEntriesInOneRow) {
  const std::vector<Ordered> rows = {
      {{"A|1|5"}, "A|1|5", "A|1|5"},
      {{"A|1|5", "B|2|7", "A|3|6"}, "B|2|7 A|3|6 A|1|5", "A|1|5 A|3|6 B|2|7"},
      {{"A|1|5", "A|1|5"}, "A|1|5 A|1|5", "A|1|5 A|1|5"},
      {{"A|1|5", "B|2|5", "C|3|5"}, "C|3|5 B|2|5 A|1|5", "C|3|5 B|2|5 A|1|5"},
      {{"A|1|9", "A|2|10", "A|3|100"}, "A|3|100 A|2|10 A|1|9", "A|1|9 A|2|10 A|3|100"},
      {{"A|1|0", "A|2|4294967295"}, "A|2|4294967295 A|1|0", "A|1|0 A|2|4294967295"},
      // On both sides of the bound between small and large tick counts.
      {{"A|1|4096", "A|2|4095", "A|3|4094", "A|4|4097", "A|5|4095", "A|6|4096"},
       "A|4|4097 A|6|4096 A|1|4096 A|5|4095 A|2|4095 A|3|4094",
       "A|3|4094 A|5|4095 A|2|4095 A|6|4096 A|1|4096 A|4|4097"},
  };
  ExpectOrders(rows, false);
}

TEST(OrderedTicks, KeepsTextsAsTheyWereRead) {
  const std::vector<Entry> entries = {
      "A|10|3",       "A|007|3",        "A|10|003",       "A|10|3.0",       "A|10|+3",
      "|10|3",        "A||3",           "A|x y|3",        "A|-1|3",         "A|1.50|3",
      "A|10|3.00",    "A|2147483647|3", "A|2147483648|3", "A|4294967296|3", "A|99999999999|3",
      "A B\xfd|10|3",
  };
  // All ticks are 3, so the order of arrival shows, reversed.
  std::string want;
  for (const Entry& entry : entries) {
    want = std::string(entry) + (want.empty() ? "" : " ") + want;
  }
  EXPECT_EQ(RowTexts(MakeTable(entries)), want);
}

// Ticks are compared as numbers throughout, and what is not numeric counts as 0.
TEST(OrderedTicks, OrdersUnusualTicksByTheirValue) {
  const std::vector<Ordered> rows = {
      {{"A|1|5", "A|2|05", "A|3|5.0", "A|4|5"},
       "A|4|5 A|3|5.0 A|2|05 A|1|5",
       "A|4|5 A|3|5.0 A|2|05 A|1|5"},
      {{"A|1|1", "A|2|1.5", "A|3|2"}, "A|3|2 A|2|1.5 A|1|1", "A|1|1 A|2|1.5 A|3|2"},
      {{"A|1|0", "A|2|-1", "A|3|1", "A|4|-2"},
       "A|3|1 A|1|0 A|2|-1 A|4|-2",
       "A|4|-2 A|2|-1 A|1|0 A|3|1"},
      {{"A|1|0", "A|2|", "A|3|abc", "A|4|0", "A|5|1e5", "A|6| 7"},
       "A|6| 7 A|5|1e5 A|4|0 A|3|abc A|2| A|1|0",
       "A|6| 7 A|5|1e5 A|4|0 A|3|abc A|2| A|1|0"},
      {{"A|1|4294967295", "A|2|4294967296", "A|3|4294967297", "A|4|4294967296"},
       "A|3|4294967297 A|4|4294967296 A|2|4294967296 A|1|4294967295",
       "A|1|4294967295 A|4|4294967296 A|2|4294967296 A|3|4294967297"},
      {{"A|1|4095.5", "A|2|4096", "A|3|4095", "A|4|4096.5", "A|5|4094.5", "A|6|04096"},
       "A|4|4096.5 A|6|04096 A|2|4096 A|1|4095.5 A|3|4095 A|5|4094.5",
       "A|5|4094.5 A|3|4095 A|1|4095.5 A|6|04096 A|2|4096 A|4|4096.5"},
      {{"A|1|1.5", "A|2|1.5", "A|3|1.50"}, "A|3|1.50 A|2|1.5 A|1|1.5", "A|3|1.50 A|2|1.5 A|1|1.5"},
      {{"A|1|9223372036854775806", "A|2|9223372036854775807", "A|3|9223372036854775807"},
       "A|3|9223372036854775807 A|2|9223372036854775807 A|1|9223372036854775806",
       "A|1|9223372036854775806 A|3|9223372036854775807 A|2|9223372036854775807"},
      {{"A|1|-0.5", "A|2|0", "A|3|0.5", "A|4|-0.0"},
       "A|3|0.5 A|4|-0.0 A|2|0 A|1|-0.5",
       "A|1|-0.5 A|4|-0.0 A|2|0 A|3|0.5"},
      // So many decimals that they round to a whole number: equals among equals.
      {{"A|1|5", "B|2|5.00000000000000000001", "C|3|4.99999999999999999999", "D|4|5"},
       "D|4|5 C|3|4.99999999999999999999 B|2|5.00000000000000000001 A|1|5",
       "D|4|5 C|3|4.99999999999999999999 B|2|5.00000000000000000001 A|1|5"},
      {{"A|1|4095.99999999999999999999", "B|2|4096", "C|3|0.00000000000000000000000001"},
       "B|2|4096 A|1|4095.99999999999999999999 C|3|0.00000000000000000000000001",
       "C|3|0.00000000000000000000000001 B|2|4096 A|1|4095.99999999999999999999"},
      {{"A|1|5000000000", "B|2|5000000000.00000000000000000001"},
       "B|2|5000000000.00000000000000000001 A|1|5000000000",
       "B|2|5000000000.00000000000000000001 A|1|5000000000"},
      {{"A|1|99999999999999999999", "A|2|5", "A|3|-99999999999999999999"},
       "A|1|99999999999999999999 A|2|5 A|3|-99999999999999999999",
       "A|3|-99999999999999999999 A|2|5 A|1|99999999999999999999"},
  };
  ExpectOrders(rows, false);
}

TEST(OrderedTicks, HasARowPerProgramInOrderOfFirstAppearance) {
  const std::vector<Ordered> rows = {
      {{"b|1|5"}, "b|1|5", "b|1|5"},
      {{"b|1|5", "a|2|9", "b|3|7", "B|4|5", "a|5|9"},
       "b|3|7 b|1|5 / a|5|9 a|2|9 / B|4|5",
       "b|1|5 b|3|7 / a|5|9 a|2|9 / B|4|5"},
      // A row may hold nothing but unusual ticks, before, between and after the others.
      {{"x|1|1.5", "a|2|3", "y|3|-4", "y|4|-3", "a|5|2.5", "z|6|0.5"},
       "x|1|1.5 / a|2|3 a|5|2.5 / y|4|-3 y|3|-4 / z|6|0.5",
       "x|1|1.5 / a|5|2.5 a|2|3 / y|3|-4 y|4|-3 / z|6|0.5"},
      {{"|1|5", "A|2|6", "|3|4"}, "|1|5 |3|4 / A|2|6", "|3|4 |1|5 / A|2|6"},
  };
  ExpectOrders(rows, true);
}

TEST(OrderedTicks, TakesNumbersAsTheyAre) {
  TickTable table;
  const NameTable::Id program = table.Programs().Intern("A");
  table.Add(program, 10, 3);
  table.Add(program, TickEntry::kExactText - 1, 4294967295U);
  table.Add("B", "20", "3");
  EXPECT_EQ(RowTexts(std::move(table)), "A|2147483647|4294967295 B|20|3 A|10|3");
}

TEST(OrderedTicks, HasRoomForAnyNumberOfPrograms) {
  TickTable table;
  for (int program = 1; program <= 3000; ++program) {
    table.Add("P" + std::to_string(program), "1", std::to_string(program % 7));
    table.Add("P" + std::to_string(program % 11), "2", "8");
  }
  const OrderedTicks ticks(std::move(table), kDescending, true);
  EXPECT_EQ(ticks.RowCount(), ticks.Programs().size());
  for (std::size_t row = 0; row < ticks.RowCount(); ++row) {
    ticks.ForEach(row, [row](const TickEntry& entry) { EXPECT_EQ(entry.program, row); });
  }
}

TEST(TickTable, VisitsEveryEntryOnce) {
  TickTable table = MakeTable({"A|1|5", "B|2|4096", "A|3|1.5", "A|x|7", "C|4|99999"});
  for (std::uint32_t line = 0; line < 70000; ++line) {
    table.Add(0, line, 5000 + line);
  }
  std::size_t visited = 0;
  std::uint64_t ticks = 0;
  table.ForEach([&](const TickEntry& entry) {
    ++visited;
    ticks += entry.ticks;
  });
  EXPECT_EQ(visited, 70005U);
  EXPECT_EQ(ticks, 5 + 4096 + 7 + 99999 + 70000ULL * 5000 + 70000ULL * 69999 / 2);
}

}  // namespace

}  // namespace ptick
