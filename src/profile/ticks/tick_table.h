#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "profile/ticks/name_table.h"
#include "profile/ticks/tick_buckets.h"
#include "profile/ticks/tick_entries.h"
#include "value/field_list.h"
#include "value/value.h"

namespace ptick {

/// The trace entries of a profile as they arrive: `Details`, `ProgramNames` and `ProgramCount`.
/// OrderedTicks gives them their order. Small tick counts, nearly all, go into buckets, which are
/// in order from the start; larger ones and numbers that are not whole are kept for one sort.
class TickTable {
 public:
  /// An entry whose ticks are no whole number below 2^32: a fraction, a negative or a huge one.
  /// Such ticks never equal those of a regular entry.
  struct IrregularEntry {
    Number ticks;
    TickEntry entry;
  };

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

  /// Calls `visit` with every entry, in no order that means anything.
  template <typename Visit>
  void ForEach(Visit visit) const {
    for (std::uint32_t ticks = 0; ticks < TickBuckets::kCount; ++ticks) {
      small_.ForEach(ticks, visit);
    }
    large_.ForEach(visit);
    for (const IrregularEntry& irregular : irregular_) {
      visit(irregular.entry);
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
  friend class OrderedTicks;

  NameTable programs_;
  TickBuckets small_;
  TickEntries large_;
  std::vector<IrregularEntry> irregular_;
  FieldList exact_lines_;
  FieldList exact_ticks_;
};

}  // namespace ptick
