#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "profile/name_table.h"
#include "profile/tick_entries.h"
#include "value/dynamic_array.h"
#include "value/field_list.h"
#include "value/value.h"

namespace ptick {

/// The trace entries of a profile: `Details`, `ProgramNames` and `ProgramCount`.
///
/// Entries are collected in order of arrival and ordered once, by Order. The order is that of
/// sorted inserts: by ticks, compared as numbers, entries with equal ticks in reverse order of
/// arrival.
class TickTable {
 public:
  /// Adds an entry whose texts are as read.
  void Add(std::string_view program, std::string_view line, std::string_view ticks);

  /// Adds an entry with an ordinary line number below 2^31 and an ordinary tick count.
  void Add(NameTable::Id program, std::uint32_t line, std::uint32_t ticks) {
    entries_.Add({program, line, ticks});
  }

  /// The program names of all entries, in order of first appearance.
  NameTable& Programs() { return programs_; }
  const NameTable& Programs() const { return programs_; }

  /// Orders the entries: one row of all, or one row per program. Called once, after the last Add.
  void Order(LocateOrder order, bool per_program);

  /// The number of rows: 1, or the number of programs when ordered per program.
  std::size_t RowCount() const { return row_starts_.size() - 1; }
  /// Row `row`, counted from 0; per program, row r is that of program r.
  std::span<const TickEntry> Row(std::size_t row) const {
    return ordered_.Entries().subspan(row_starts_[row], row_starts_[row + 1] - row_starts_[row]);
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
    Number Ticks;
    TickEntry Entry;
  };

  void OrderIrregular(LocateOrder order, bool per_program);
  void MergeIrregular(LocateOrder order, bool per_program);

  NameTable programs_;
  TickEntries entries_;
  std::vector<IrregularEntry> irregular_;
  FieldList exact_lines_;
  FieldList exact_ticks_;
  TickEntryBlock ordered_;
  std::vector<std::size_t> row_starts_{0, 0};
};

}  // namespace ptick
