#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>
#include <vector>

#include "profile/ticks/bucket_part.h"
#include "profile/ticks/name_table.h"
#include "profile/ticks/parts_backwards.h"
#include "profile/ticks/tick_buckets.h"
#include "profile/ticks/tick_entries.h"
#include "profile/ticks/tick_span.h"
#include "value/field_list.h"
#include "value/value.h"

namespace ptick {

/// The trace entries of a profile as they arrive: `Details`, `ProgramNames` and `ProgramCount`.
/// OrderedTicks gives them their order. Small tick counts, nearly all, go into buckets, which are
/// in order from the start; larger ones and numbers that are not whole are kept for one sort.
/// Nothing is added any more once JoinTicks has joined parts of other threads (tick_part.h).
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
    const auto visit_span = [&visit](const TickSpan& span) { span.ForEach(visit); };
    SmallTicks small(*this);
    for (std::uint32_t ticks = 0; ticks < TickBuckets::kCount; ++ticks) {
      small.ForEachSpan(ticks, visit_span);
    }
    large_.ForEach(visit);
    for (const IrregularEntry& irregular : irregular_) {
      visit(irregular.entry);
    }
  }

  /// How many entries have small tick counts.
  std::uint64_t CountSmall() const;

  /// The texts of an entry that has them kept aside.
  std::string_view ExactLine(const TickEntry& entry) const {
    return exact_lines_[entry.ExactIndex()];
  }
  std::string_view ExactTicks(const TickEntry& entry) const {
    return exact_ticks_[entry.ExactIndex()];
  }

 private:
  friend class OrderedTicks;
  friend class TickJoin;
  friend class TickPart;

  /// A walk over the entries with small tick counts.
  class SmallTicks {
   public:
    explicit SmallTicks(const TickTable& table) : own_(table.small_), parts_(table.parts_) {}

    /// Calls `visit` with spans of all entries of this tick count, in reverse order of arrival.
    template <typename Visit>
    void ForEachSpan(std::uint32_t ticks, Visit& visit) {
      parts_.ForEach(ticks, visit);
      TickBuckets::Backwards own(own_, ticks);
      for (auto slots = own.Next(kAll); !slots.empty(); slots = own.Next(kAll)) {
        visit(TickSpan(slots, ticks, nullptr));
      }
    }

   private:
    static constexpr std::size_t kAll = std::numeric_limits<std::size_t>::max();

    const TickBuckets& own_;
    PartsBackwards parts_;
  };

  NameTable programs_;
  TickBuckets small_;              ///< empty when parts have been joined
  std::vector<BucketPart> parts_;  ///< those: small tick counts that several threads have added
  TickEntries large_;
  std::vector<IrregularEntry> irregular_;
  FieldList exact_lines_;
  FieldList exact_ticks_;
};

}  // namespace ptick
