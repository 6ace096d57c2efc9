#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "profile/ticks/sort_order.h"
#include "profile/ticks/tick_table.h"

namespace ptick {

/// The trace entries of a profile in their order: by ticks, compared as numbers, entries with equal
/// ticks in reverse order of arrival. That is the order of sorted inserts. Either one row of all
/// entries, or one row per program.
///
/// Three parts make the order, each in order itself:
///
///   large ticks        sorted here, once
///   small ticks        a bucket per tick count, walked downwards (or upwards)
///   irregular ticks    few or none: put in wherever their ticks belong
class OrderedTicks {
 public:
  /// Takes the entries over.
  OrderedTicks(TickTable&& table, SortOrder order, bool per_program);

  SortOrder Order() const { return order_; }

  /// The number of rows: 1, or the number of programs where there is a row for each.
  std::size_t RowCount() const { return per_program_ ? table_.Programs().size() : 1; }

  /// Calls `visit` with every entry of row `row`, counted from 0, in order; per program, row r is
  /// that of program r.
  template <typename Visit>
  void ForEach(std::size_t row, Visit visit) const {
    if (!per_program_) {
      ForEachOfAll(visit);
      return;
    }
    const std::size_t size = row_starts_[row + 1] - row_starts_[row];
    for (const TickEntry& entry : rows_.Entries().subspan(row_starts_[row], size)) {
      visit(entry);
    }
  }

  const NameTable& Programs() const { return table_.Programs(); }

  /// The texts of an entry that has them kept aside.
  std::string_view ExactLine(const TickEntry& entry) const { return table_.ExactLine(entry); }
  std::string_view ExactTicks(const TickEntry& entry) const { return table_.ExactTicks(entry); }

 private:
  static bool Precedes(const Number& a, const Number& b, SortOrder order);

  void OrderIrregular();
  void MakeRows();

  // All entries in their order, whatever their program.
  template <typename Visit>
  void ForEachOfAll(Visit visit) const {
    auto irregular = table_.irregular_.cbegin();
    const auto last_irregular = table_.irregular_.cend();
    const auto put_irregular_before = [&](std::uint32_t ticks) {
      while (irregular != last_irregular &&
             Precedes(irregular->ticks, std::int64_t{ticks}, order_)) {
        visit((irregular++)->entry);
      }
    };
    const auto visit_small = [&](std::uint32_t ticks) {
      put_irregular_before(ticks);
      table_.small_.ForEach(ticks, visit);
    };
    const auto visit_large = [&] {
      for (const TickEntry& entry : large_.Entries()) {
        put_irregular_before(entry.ticks);
        visit(entry);
      }
    };
    if (order_ == SortOrder::kDescending) {
      visit_large();
      for (std::uint32_t ticks = TickBuckets::kCount; ticks-- > 0;) {
        visit_small(ticks);
      }
    } else {
      for (std::uint32_t ticks = 0; ticks < TickBuckets::kCount; ++ticks) {
        visit_small(ticks);
      }
      visit_large();
    }
    for (; irregular != last_irregular; ++irregular) {
      visit(irregular->entry);
    }
  }

  TickTable table_;
  SortOrder order_;
  bool per_program_;
  TickEntryBlock large_;  ///< the entries with large ticks, in order
  TickEntryBlock rows_;   ///< per program: all entries, program by program
  std::vector<std::size_t> row_starts_;
};

}  // namespace ptick
