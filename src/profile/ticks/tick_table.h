#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "profile/ticks/name_table.h"
#include "profile/ticks/sort_order.h"
#include "profile/ticks/tick_buckets.h"
#include "profile/ticks/tick_entries.h"
#include "value/dynamic_array.h"
#include "value/field_list.h"
#include "value/value.h"

namespace ptick {

/// The trace entries of a profile: `Details`, `ProgramNames` and `ProgramCount`.
///
/// The order of the entries is that of sorted inserts: by ticks, compared as numbers, entries with
/// equal ticks in reverse order of arrival. Small tick counts, nearly all, go into buckets, which
/// are in that order from the start; larger ones and numbers that are not whole are sorted once, by
/// Order.
class TickTable {
 public:
  /// Adds an entry whose texts are as read.
  void Add(std::string_view program, std::string_view line, std::string_view ticks);

  /// Adds an entry with an ordinary line number below 2^31 and an ordinary tick count.
  void Add(NameTable::Id program, std::uint32_t line, std::uint32_t ticks) {
    const TickEntry entry{program, line, ticks};
    if (ticks < TickBuckets::kCount) {
      small_.Add(entry);
    } else {
      large_.Add(entry);
    }
  }

  /// The program names of all entries, in order of first appearance.
  NameTable& Programs() { return programs_; }
  const NameTable& Programs() const { return programs_; }

  /// Orders the entries: one row of all, or one row per program. Called once, after the last Add.
  void Order(SortOrder order, bool per_program);

  /// The number of rows: 1, or the number of programs when ordered per program.
  std::size_t RowCount() const { return per_program_ ? programs_.size() : 1; }

  /// Calls `visit` with every entry of row `row`, counted from 0, in order; per program, row r is
  /// that of program r.
  template <typename Visit>
  void ForEach(std::size_t row, Visit visit) const {
    if (!per_program_) {
      ForEachOrdered(visit);
      return;
    }
    const std::size_t size = row_starts_[row + 1] - row_starts_[row];
    for (const TickEntry& entry : rows_.Entries().subspan(row_starts_[row], size)) {
      visit(entry);
    }
  }

  /// The texts of an entry that has them kept aside.
  std::string_view ExactLine(const TickEntry& entry) const {
    return exact_lines_[entry.ExactIndex()];
  }
  std::string_view ExactTicks(const TickEntry& entry) const {
    return exact_ticks_[entry.ExactIndex()];
  }

 private:
  /// An entry whose ticks are no whole number below 2^32: a fraction, a negative or a huge one.
  /// Such ticks never equal those of a regular entry.
  struct IrregularEntry {
    Number ticks;
    TickEntry entry;
  };

  static bool Precedes(const Number& a, const Number& b, SortOrder order);

  void OrderIrregular();
  void MakeRows();

  // All entries in their order, whatever their program: large and small ticks one after the other,
  // the irregular ones, if any, where their ticks belong.
  template <typename Visit>
  void ForEachOrdered(Visit visit) const {
    auto irregular = irregular_.cbegin();
    const auto put_irregular_before = [&](std::uint32_t ticks) {
      while (irregular != irregular_.cend() &&
             Precedes(irregular->ticks, std::int64_t{ticks}, order_)) {
        visit((irregular++)->entry);
      }
    };
    const auto visit_small = [&](std::uint32_t ticks) {
      put_irregular_before(ticks);
      small_.ForEach(ticks, visit);
    };
    const auto visit_large = [&] {
      for (const TickEntry& entry : large_ordered_.Entries()) {
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
    for (; irregular != irregular_.cend(); ++irregular) {
      visit(irregular->entry);
    }
  }

  NameTable programs_;
  TickBuckets small_;
  TickEntries large_;
  std::vector<IrregularEntry> irregular_;
  FieldList exact_lines_;
  FieldList exact_ticks_;

  SortOrder order_ = SortOrder::kDescending;
  bool per_program_ = false;
  TickEntryBlock large_ordered_;
  TickEntryBlock rows_;  ///< with -n: all entries, program by program
  std::vector<std::size_t> row_starts_;
};

}  // namespace ptick
