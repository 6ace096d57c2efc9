// Ticks by program and line, entries of one line added up: what formats hold that add up.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "figures/running_sum.h"
#include "profile/ticks/name_table.h"
#include "profile/ticks/tick_table.h"
#include "value/value.h"

namespace ptick::exports {

/// What a format can hold.
struct SumRules {
  /// Whole ticks only: sums are cut, and those that become 0 are left out.
  bool whole_ticks = false;
  /// Lines are whole numbers from 0 to 2^32 - 1 only: any other line becomes line 0.
  bool numbered_lines = false;
};

/// Lines, or entries, that a format does not hold as they are, and their ticks.
struct TickLoss {
  std::uint64_t count = 0;
  RunningSum ticks;

  void Add(const Number& number) {
    ++count;
    ticks.Add(Value(number));
  }
};

struct LineLosses {
  TickLoss cut;         ///< lines whose fraction was cut; the ticks are the fractions
  TickLoss below_one;   ///< lines left out because no whole tick remained
  TickLoss negative;    ///< lines left out
  TickLoss too_large;   ///< lines left out: they, or the sum of all with them, are above 2^63 - 1
  TickLoss unnumbered;  ///< entries whose line is no number
};

/// The sums of all entries. Programs come hungriest first, as in reports; the lines of each in
/// ascending order, those that are no numbers last.
///
/// Holds twelve bytes a line; the table of entries is not needed afterwards, but for its names.
class LineSums {
 public:
  struct Program {
    NameTable::Id id = 0;
    Number ticks;

   private:
    friend class LineSums;
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
  };

  struct Line {
    /// Absent where the line is no number below 2^32 that is written the ordinary way.
    std::optional<std::uint32_t> number;
    std::string_view text;  ///< where there is no number
    /// Not negative; a whole number of ticks where the rules ask for that.
    Number ticks;
  };

  LineSums(const TickTable& ticks, const SumRules& rules);

  const std::vector<Program>& Programs() const { return programs_; }

  /// Calls `visit` with each line of a program.
  template <typename Visit>
  void ForEachLine(const Program& program, Visit visit) const {
    for (std::size_t row = program.begin_; row < program.end_; ++row) {
      visit(LineAt(row));
    }
  }

  std::size_t LineCount() const { return rows_.size(); }
  /// The sum of all lines that are there.
  Number Total() const { return total_; }
  const LineLosses& Losses() const { return losses_; }

 private:
  struct Row {
    std::uint32_t program;
    std::uint32_t line;   ///< a number, or kOddLine plus the place among odd_lines_
    std::uint32_t ticks;  ///< kOddTicks where they are among odd_ticks_

    std::uint64_t Key() const { return std::uint64_t{program} << 32U | line; }
  };
  struct OddTicks {
    std::size_t row;
    Number ticks;
  };

  static constexpr std::uint32_t kOddLine = std::uint32_t{1} << 31U;
  static constexpr std::uint32_t kOddTicks = ~std::uint32_t{0};

  void Collect(const TickTable& ticks, const SumRules& rules);
  void CollectOdd(const TickTable& ticks, const TickEntry& entry, const SumRules& rules);
  std::uint32_t LineOf(std::string_view text, const Number& ticks, const SumRules& rules);
  void AddUp(const SumRules& rules);
  /// What remains of a sum under the rules, nothing where the line is left out.
  std::optional<Number> Kept(const Number& sum, const SumRules& rules);
  bool AddToTotal(const Number& ticks);
  void PutRow(std::size_t row, std::uint64_t key, const Number& ticks);
  void OrderPrograms();
  Line LineAt(std::size_t row) const;

  std::vector<Row> rows_;
  NameTable odd_lines_;
  /// While entries are collected: ticks that are no whole numbers below 2^32, by Row::Key.
  std::map<std::uint64_t, RunningSum> odd_sums_;
  std::vector<OddTicks> odd_ticks_;  ///< by row
  std::vector<Program> programs_;
  Number total_;
  LineLosses losses_;
};

}  // namespace ptick::exports
