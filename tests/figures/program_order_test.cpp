#include "figures/program_order.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "profile/ticks/sort_order.h"

namespace ptick {

namespace {

struct Sample {
  std::string_view program;
  std::string_view ticks;
};

/// The names in the order of their groups.
std::vector<std::string> Order(const std::vector<Sample>& samples, ProgramsBy by,
                               SortOrder order = SortOrder::kDescending) {
  TickTable details;
  for (const Sample& sample : samples) {
    details.Add(sample.program, "1", sample.ticks);
  }
  const OrderedTicks ticks(std::move(details), order, true);
  std::vector<std::string> names;
  for (const std::size_t row : ProgramOrder(ticks, by)) {
    names.emplace_back(ticks.Programs()[static_cast<NameTable::Id>(row)]);
  }
  return names;
}

using Names = std::vector<std::string>;

TEST(ProgramOrder, IsByNameAsBytes) {
  struct Row {
    std::vector<Sample> samples;
    Names want;
  };
  const std::vector<Row> rows = {
      {{}, {}},
      {{{"b", "1"}, {"B", "5"}, {"a", "3"}}, {"B", "a", "b"}},
      {{{"P10", "1"}, {"P9", "1"}, {"P", "1"}}, {"P", "P10", "P9"}},
      {{{"10", "1"}, {"9", "1"}, {"010", "1"}}, {"010", "10", "9"}},
      {{{"z", "1"}, {"\x80", "1"}, {"\xff", "1"}, {"", "1"}}, {"", "z", "\x80", "\xff"}},
      {{{"A", "1"}, {"B", "1"}, {"A", "1"}}, {"A", "B"}},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Order(row.samples, ProgramsBy::kName), row.want);
    EXPECT_EQ(Order(row.samples, ProgramsBy::kName, SortOrder::kAscending), row.want)
        << "with ascending ticks";
  }
}

TEST(ProgramOrder, IsByTotalTicksWhenAskedFor) {
  struct Row {
    std::vector<Sample> samples;
    Names want_descending;
    Names want_ascending;
  };
  const std::vector<Row> rows = {
      {{}, {}, {}},
      {{{"A", "5"}, {"B", "7"}, {"C", "6"}}, {"B", "C", "A"}, {"A", "C", "B"}},
      {{{"A", "9"}, {"B", "10"}}, {"B", "A"}, {"A", "B"}},
      // It is the sum that counts.
      {{{"A", "5"}, {"B", "3"}, {"B", "3"}}, {"B", "A"}, {"A", "B"}},
      {{{"A", "5"}, {"B", "2"}, {"B", "2"}}, {"A", "B"}, {"B", "A"}},
      // Equal totals come in reverse order of first appearance.
      {{{"A", "5"}, {"B", "5"}, {"C", "5"}}, {"C", "B", "A"}, {"C", "B", "A"}},
      {{{"A", "5"}, {"B", "6"}, {"C", "5"}}, {"B", "C", "A"}, {"C", "A", "B"}},
      {{{"A", "2"}, {"B", "5"}, {"A", "3"}}, {"B", "A"}, {"B", "A"}},
      {{{"A", "5.0"}, {"B", "05"}, {"C", "5"}}, {"C", "B", "A"}, {"C", "B", "A"}},
      {{{"A", "0.1"}, {"A", "0.2"}, {"B", "0.3"}}, {"B", "A"}, {"B", "A"}},
      // What is not numeric counts as 0; totals may be below that.
      {{{"A", "abc"}, {"B", ""}, {"C", "-1"}, {"D", "0"}, {"E", "0.5"}},
       {"E", "D", "B", "A", "C"},
       {"C", "D", "B", "A", "E"}},
      {{{"A", "1.0002"}, {"B", "1.0001"}}, {"A", "B"}, {"B", "A"}},
      {{{"A", "4294967295"}, {"B", "4294967296"}, {"A", "2"}}, {"A", "B"}, {"B", "A"}},
      {{{"A", "9223372036854775807"}, {"B", "9223372036854775806"}}, {"A", "B"}, {"B", "A"}},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Order(row.samples, ProgramsBy::kTicks), row.want_descending);
    EXPECT_EQ(Order(row.samples, ProgramsBy::kTicks, SortOrder::kAscending), row.want_ascending)
        << "with ascending ticks";
  }
}

// Totals are held as texts, with 4 decimals at most: these two are equal.
TEST(ProgramOrder, KnowsFourDecimalsOfATotal) {
  EXPECT_EQ(Order({{"A", "1.00002"}, {"B", "1.00001"}}, ProgramsBy::kTicks), (Names{"B", "A"}));
}

}  // namespace

}  // namespace ptick
