#include "compare/line_moves.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "compare/comparison.h"
#include "compare/support/comparison_of.h"

namespace ptick::compare {

namespace {

using testing::RowTexts;
using testing::Sides;
using testing::Traces;
using Texts = std::vector<std::string>;

constexpr std::uint32_t kProgram = 3;

// An old source of three lines, "abc", that became "xac".
LineMoves Moves() {
  LineMoves moves;
  const std::vector<std::string_view> old_lines = {"a", "b", "c"};
  const std::vector<std::string_view> new_lines = {"x", "a", "c", "d"};
  moves.Set(kProgram, AlignLines(old_lines, new_lines));
  return moves;
}

TEST(LineMoves, FollowLines) {
  const LineMoves moves = Moves();
  struct Row {
    std::uint32_t line;
    std::optional<std::uint32_t> new_line;  ///< of that old line
    std::optional<std::uint32_t> old_line;  ///< of that new line
  };
  const std::uint32_t text = KeyNames::kLineText | 1;
  const std::vector<Row> rows = {
      {0, 0, 0},
      {1, 2, std::nullopt},
      {2, std::nullopt, 1},
      {3, 3, 3},
      // The fourth line of three: the new version has one, but it is not that.
      {4, std::nullopt, std::nullopt},
      {5, 5, 5},
      {text, text, text},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(moves.NewLine(kProgram, row.line), row.new_line) << row.line;
    EXPECT_EQ(moves.OldLine(kProgram, row.line), row.old_line) << row.line;
    EXPECT_EQ(moves.IsPastOldEnd(kProgram, row.line), row.line == 4 || row.line == 5) << row.line;
    EXPECT_EQ(moves.IsPastNewEnd(kProgram, row.line), row.line == 5) << row.line;
    // No sources, no moves.
    EXPECT_EQ(moves.NewLine(kProgram + 1, row.line), row.line);
    EXPECT_EQ(moves.OldLine(kProgram + 1, row.line), row.line);
    EXPECT_FALSE(moves.IsPastOldEnd(kProgram + 1, row.line)) << row.line;
  }
}

TEST(LineMoves, MakeOneRowOfALineThatMoved) {
  const Sides sides(Kind::kLine, {Traces({"A 1 500", "A 2 300", "A 3 200", "A 9 50", "B 1 100"})},
                    {Traces({"A 1 500", "A 2 550", "A 3 200", "A 9 90", "B 1 200"})});
  LineMoves moves;
  const std::vector<std::string_view> old_lines = {"a", "b", "c"};
  const std::vector<std::string_view> new_lines = {"x", "a", "c"};
  moves.Set(0, AlignLines(old_lines, new_lines));
  const Comparison comparison = sides.Compare({.normalize = false, .moves = &moves});
  EXPECT_EQ(RowTexts(comparison), (Texts{"A ->1 - 500 +500", "A 2>- 300 - -300", "B 1 100 200 +100",
                                         "A 1>2 500 550 +50~", "A 9 50 90 +40"}));
  EXPECT_EQ(comparison.RowsPastTheEnd(), 1U);
  // Without sources it looks different.
  EXPECT_EQ(RowTexts(sides.Compare(), SortBy::kName),
            (Texts{"A 2 300 550 +250", "A 9 50 90 +40", "B 1 100 200 +100"}));
}

// A line that has ticks on one side only shows both of its numbers all the same.
TEST(LineMoves, KnowLinesWithoutTicks) {
  const Sides sides(Kind::kLine, {Traces({"A 1 500"})}, {Traces({"A 3 700"})});
  LineMoves moves;
  const std::vector<std::string_view> old_lines = {"a", "b", "c"};
  const std::vector<std::string_view> new_lines = {"x", "a", "c"};
  moves.Set(0, AlignLines(old_lines, new_lines));
  EXPECT_EQ(RowTexts(sides.Compare({.normalize = false, .moves = &moves})),
            (Texts{"A 3 - 700 +700", "A 1>2 500 - -500"}));
}

}  // namespace

}  // namespace ptick::compare
