// What changed between two sides: a row for each key whose mean changed, with the chance of it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

#include "compare/line_moves.h"
#include "compare/per_run.h"
#include "compare/side.h"
#include "compare/tick_test.h"
#include "value/value.h"

namespace ptick::compare {

/// A key whose mean changed.
struct Row {
  static constexpr std::uint32_t kNone = ~std::uint32_t{0};

  /// Number of the program, command, caller or counter in the names.
  std::uint32_t name = 0;
  /// Line or subroutine, on each side; kNone for a line that the source of that side does not have.
  std::uint32_t old_detail = 0;
  std::uint32_t new_detail = 0;
  /// Its numbers among the keys of the sides; kNone on a side that does not have it.
  KeyTable::Id old_key = kNone;
  KeyTable::Id new_key = kNone;
  /// What the runs of each side add up to; 0 on a side that does not have the key.
  Number old_sum = std::int64_t{0};
  Number new_sum = std::int64_t{0};
  bool is_significant = true;
  /// How likely chance alone gives such a change, and the false discovery rate at which it counts;
  /// not a number for a row that is not tested.
  double p_value = std::numeric_limits<double>::quiet_NaN();
  double rate = std::numeric_limits<double>::quiet_NaN();

  bool IsTested() const { return p_value == p_value; }
};

struct ComparisonOptions {
  /// Takes the new side times what makes both totals equal, which are above 0 then.
  bool normalize = false;
  /// Where lines went; null when they are compared by their numbers. Lives as long as the
  /// comparison.
  const LineMoves* moves = nullptr;
};

/// All figures are means per run. Those of the new side are normalized where that is asked for, but
/// for its total.
class Comparison {
 public:
  /// Sides of one kind, with a run each at least, which share their names and outlive this.
  Comparison(const Side& old_side, const Side& new_side, const ComparisonOptions& options = {});

  const Side& OldSide() const { return old_; }
  const Side& NewSide() const { return new_; }
  const KeyNames& Names() const { return old_.Names(); }

  /// In no order that means anything.
  const std::vector<Row>& Rows() const { return rows_; }

  /// Nothing on a side that does not have the key.
  std::optional<Number> Old(const Row& row) const;
  std::optional<Number> New(const Row& row) const;
  Number Change(const Row& row) const;
  /// Standard deviations; nothing as well where the side has one run.
  std::optional<double> OldDeviation(const Row& row) const;
  std::optional<double> NewDeviation(const Row& row) const;
  std::optional<Number> OldFigure(const Row& row, CommandFigure figure) const;
  std::optional<Number> NewFigure(const Row& row, CommandFigure figure) const;

  /// Ticks of both sides as they are, and what the new one has more.
  Number OldTotal() const;
  Number NewTotal() const;
  Number TotalChange() const;
  /// The p-value of the change of the total, by itself; nothing when it is not tested.
  std::optional<double> TotalPValue() const;

  /// What new figures were taken times to be normalized; 1 where they were not.
  double Scale() const { return scale_; }
  /// Whether rows are tested by Welch's test.
  bool IsWelch() const;
  /// How many rows have a line that is past the end of its source.
  std::size_t RowsPastTheEnd() const;

 private:
  void Join(const LineMoves* moves);
  void AddRow(Row row);
  void PrefetchNew(KeyTable::Id old_key) const;
  bool IsChanged(const Row& row) const;
  void TestRows();
  TickTest::Sides SidesForRows() const;
  TickTest::Sides SidesForTotals() const;

  const Side& old_;
  const Side& new_;
  const LineMoves* moves_;
  bool normalize_;
  Factor old_factor_;
  Factor new_factor_;
  double scale_ = 1;
  std::vector<Row> rows_;
};

/// Whether two sides can be normalized: both totals are above 0.
bool CanNormalize(const Side& old_side, const Side& new_side);

}  // namespace ptick::compare
