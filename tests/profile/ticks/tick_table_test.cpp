#include "profile/ticks/tick_table.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
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
    TickTable descending = MakeTable(row.entries);
    descending.Order(kDescending, per_program);
    EXPECT_EQ(RowTexts(descending), row.want_descending);
    TickTable ascending = MakeTable(row.entries);
    ascending.Order(kAscending, per_program);
    EXPECT_EQ(RowTexts(ascending), row.want_ascending);
  }
}

TEST(TickTable, HasOneEmptyRowWithoutEntries) {
  for (const SortOrder order : {kAscending, kDescending}) {
    TickTable table;
    EXPECT_EQ(table.RowCount(), 1U);
    EXPECT_EQ(RowTexts(table), "");
    table.Order(order, false);
    EXPECT_EQ(table.RowCount(), 1U);
    EXPECT_EQ(RowTexts(table), "");
    TickTable per_program;
    per_program.Order(order, true);
    EXPECT_EQ(per_program.RowCount(), 0U);
  }
}

TEST(TickTable, OrdersAllEntriesInOneRow) {
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

TEST(TickTable, KeepsTextsAsTheyWereRead) {
  const std::vector<Entry> entries = {
      "A|10|3",       "A|007|3",        "A|10|003",       "A|10|3.0",       "A|10|+3",
      "|10|3",        "A||3",           "A|x y|3",        "A|-1|3",         "A|1.50|3",
      "A|10|3.00",    "A|2147483647|3", "A|2147483648|3", "A|4294967296|3", "A|99999999999|3",
      "A B\xfd|10|3",
  };
  // All ticks are 3, so the order of arrival shows, reversed.
  std::string want;
  for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
    want += (want.empty() ? "" : " ") + std::string(*entry);
  }
  TickTable table = MakeTable(entries);
  table.Order(kDescending, false);
  EXPECT_EQ(RowTexts(table), want);
}

// Ticks are compared as numbers throughout, and what is not numeric counts as 0.
TEST(TickTable, OrdersUnusualTicksByTheirValue) {
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
      {{"A|1|99999999999999999999", "A|2|5", "A|3|-99999999999999999999"},
       "A|1|99999999999999999999 A|2|5 A|3|-99999999999999999999",
       "A|3|-99999999999999999999 A|2|5 A|1|99999999999999999999"},
  };
  ExpectOrders(rows, false);
}

TEST(TickTable, HasARowPerProgramInOrderOfFirstAppearance) {
  const std::vector<Ordered> rows = {
      {{"b|1|5"}, "b|1|5", "b|1|5"},
      {{"b|1|5", "a|2|9", "b|3|7", "B|4|5", "a|5|9"},
       "b|3|7 b|1|5 / a|5|9 a|2|9 / B|4|5",
       "b|1|5 b|3|7 / a|5|9 a|2|9 / B|4|5"},
      // A row may hold nothing but unusual ticks, before, between and behind the others.
      {{"x|1|1.5", "a|2|3", "y|3|-4", "y|4|-3", "a|5|2.5", "z|6|0.5"},
       "x|1|1.5 / a|2|3 a|5|2.5 / y|4|-3 y|3|-4 / z|6|0.5",
       "x|1|1.5 / a|5|2.5 a|2|3 / y|3|-4 y|4|-3 / z|6|0.5"},
      {{"|1|5", "A|2|6", "|3|4"}, "|1|5 |3|4 / A|2|6", "|3|4 |1|5 / A|2|6"},
  };
  ExpectOrders(rows, true);
}

TEST(TickTable, TakesNumbersAsTheyAre) {
  TickTable table;
  const NameTable::Id program = table.Programs().Intern("A");
  table.Add(program, 10, 3);
  table.Add(program, TickEntry::kExactText - 1, 4294967295U);
  table.Add("B", "20", "3");
  table.Order(kDescending, false);
  EXPECT_EQ(RowTexts(table), "A|2147483647|4294967295 B|20|3 A|10|3");
}

TEST(TickTable, HasRoomForAnyNumberOfPrograms) {
  TickTable table;
  for (int program = 1; program <= 3000; ++program) {
    table.Add("P" + std::to_string(program), "1", std::to_string(program % 7));
    table.Add("P" + std::to_string(program % 11), "2", "8");
  }
  table.Order(kDescending, true);
  EXPECT_EQ(table.RowCount(), table.Programs().size());
  for (std::size_t row = 0; row < table.RowCount(); ++row) {
    table.ForEach(row, [row](const TickEntry& entry) { EXPECT_EQ(entry.program, row); });
  }
}

}  // namespace
}  // namespace ptick
