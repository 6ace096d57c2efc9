#include "compare/row_order.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "compare/support/comparison_of.h"

namespace ptick::compare {

namespace {

using testing::RowTexts;
using testing::Sides;
using testing::Traces;
using Texts = std::vector<std::string>;

TEST(OrderRows, SortsAsAskedFor) {
  const Sides sides(Kind::kLine, {Traces({"A 1 1000", "A 2 10", "B 1 500", "C 1 5", "D 1 0"})},
                    {Traces({"A 1 1100", "A 2 60", "B 1 100", "A 3 20", "D 1 7"})});
  const Comparison comparison = sides.Compare();
  struct Row {
    SortBy by;
    Texts want;  ///< program and line
  };
  const std::vector<Row> rows = {
      {SortBy::kChange, {"B 1", "A 1", "A 2", "A 3", "D 1", "C 1"}},
      {SortBy::kRelative, {"A 3", "D 1", "A 2", "C 1", "B 1", "A 1"}},
      {SortBy::kOld, {"A 1", "B 1", "A 2", "C 1", "D 1", "A 3"}},
      {SortBy::kNew, {"A 1", "B 1", "A 2", "A 3", "D 1", "C 1"}},
      {SortBy::kName, {"A 1", "A 2", "A 3", "B 1", "C 1", "D 1"}},
  };
  for (const Row& row : rows) {
    Texts names;
    for (const std::string& text : RowTexts(comparison, row.by)) {
      names.push_back(text.substr(0, 3));
    }
    EXPECT_EQ(names, row.want) << static_cast<int>(row.by);
  }
}

TEST(OrderRows, BreaksTiesByNameThenLine) {
  const Texts in_order = {"A 2 0 5",     "A 10 0 5", "A 010 0 5", "A 10.5 0 5",
                          "A\xFF 1 0 5", "B 1 0 5",  "B 1x 0 5"};
  // Texts that are no numbers count as 0 among lines.
  const Texts want = {"A 2", "A 010", "A 10", "A 10.5", "A\xFF 1", "B 1x", "B 1"};
  Texts entries;
  for (const std::string& entry : in_order) {
    const std::size_t line = entry.find(' ', entry.find(' ') + 1);
    entries.push_back(entry.substr(0, line) + " 5");
  }
  for (int round = 0; round < 20; ++round) {
    std::ranges::next_permutation(entries);
    const Sides sides(Kind::kLine, {{}}, {Traces(entries)});
    Texts got;
    for (const std::string& text : RowTexts(sides.Compare())) {
      got.push_back(text.substr(0, text.find(" -")));
    }
    EXPECT_EQ(got, want);
  }
}

TEST(OrderRows, SortsLinesAboveAllNumbersWithTheOthers) {
  const Sides sides(Kind::kLine, {{}},
                    {Traces({"A 4000000000 5", "A 99999999999 5", "A 7 5", "A 0 5"})});
  EXPECT_EQ(RowTexts(sides.Compare()),
            (Texts{"A 0 - 5 +5~", "A 7 - 5 +5~", "A 4000000000 - 5 +5~", "A 99999999999 - 5 +5~"}));
}

TEST(OrderRows, SortsSubroutinesByTheirBytes) {
  const Sides sides(Kind::kSubroutine, {{}},
                    {{"subroutine_call|B C|1", "subroutine_call|A Z|1", "subroutine_call|A B|1"}});
  EXPECT_EQ(RowTexts(sides.Compare()), (Texts{"A B - 1 +1", "A Z - 1 +1", "B C - 1 +1"}));
}

// A line that is gone, and a new one of the same number.
TEST(OrderRows, PutsTheLineThatIsGoneFirst) {
  const Sides sides(Kind::kLine, {Traces({"A 1 5"})}, {Traces({"A 1 5"})});
  LineMoves moves;
  moves.Set(0, AlignLines(std::vector<std::string_view>{"a"}, std::vector<std::string_view>{"b"}));
  EXPECT_EQ(RowTexts(sides.Compare({.normalize = false, .moves = &moves})),
            (Texts{"A 1>- 5 - -5~", "A ->1 - 5 +5~"}));
}

}  // namespace

}  // namespace ptick::compare
