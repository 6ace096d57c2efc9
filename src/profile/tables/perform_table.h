#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "profile/scan/perform_line.h"
#include "profile/ticks/name_batch.h"
#include "profile/ticks/name_table.h"
#include "profile/ticks/number_texts.h"
#include "value/chunk_list.h"

namespace ptick {

/// The numbers of a PERFORM record, in the order of a `Performs` entry.
enum class PerformNumber { kStartClock, kEndClock, kStartTime, kEndTime, kTicks, kUsrCpu, kSysCpu };
inline constexpr std::size_t kPerformNumbers = 7;

/// What a PERFORM record says, as it was read; what it does not say is empty.
struct PerformTexts {
  std::array<std::string_view, kPerformNumbers> numbers;
  std::string_view type;
  std::string_view command;  ///< never empty

  std::string_view& operator[](PerformNumber n) { return numbers.at(static_cast<std::size_t>(n)); }
};

/// The performed commands: `Performs`. Each distinct command is held once, with the number of times
/// it was performed; the single records, 36 bytes each, are kept only where they are wanted.
class PerformTable {
 public:
  /// One PERFORM, in recorded order.
  class Record {
   public:
    std::string Text(PerformNumber n) const { return table_->numbers_.Text(IdOf(n)); }
    Number AsNumber(PerformNumber n) const { return table_->numbers_.AsNumber(IdOf(n)); }
    bool Has(PerformNumber n) const { return IdOf(n) != NumberTexts::kEmpty; }
    /// The number where it is written the ordinary way, 0 where there is none.
    std::optional<std::uint32_t> Whole(PerformNumber n) const {
      return NumberTexts::Whole(IdOf(n));
    }
    NameTable::Id TypeId() const { return entry_->type; }
    std::string_view Type() const { return table_->types_[entry_->type]; }
    std::string_view Command() const { return table_->commands_[entry_->command]; }
    NameTable::Id CommandId() const { return entry_->command; }

   private:
    friend class PerformTable;
    struct Entry {
      NameTable::Id command;
      NameTable::Id type;
      std::array<NumberTexts::Id, kPerformNumbers> numbers;
    };
    Record(const PerformTable& table, const Entry& entry) : table_(&table), entry_(&entry) {}
    NumberTexts::Id IdOf(PerformNumber n) const {
      return entry_->numbers[static_cast<std::size_t>(n)];
    }

    const PerformTable* table_;
    const Entry* entry_;
  };

  /// Counts a PERFORM, and keeps its record when `keep` is set.
  void Add(const PerformTexts& texts, bool keep);

  /// Counts PERFORMs of these commands, at most kNameBatch, and keeps no records of them.
  void Count(std::span<const std::string_view> commands);

  /// Counts PERFORMs, at most kNameBatch, and keeps their records.
  void Add(std::span<const PerformLine> lines);

  /// How many PERFORMs there were.
  std::uint64_t Count() const { return count_; }

  /// The distinct commands, in order of first appearance, and how often each was performed.
  const NameTable& Commands() const { return commands_; }
  std::uint64_t TimesOf(NameTable::Id command) const { return times_[command]; }

  /// The distinct types of the records kept.
  const NameTable& Types() const { return types_; }

  /// The records kept, in recorded order; valid until the next Add.
  std::size_t RecordCount() const { return entries_.size(); }
  Record operator[](std::size_t n) const { return {*this, entries_[n]}; }

  /// Calls `visit` with every record kept, in recorded order. What is far apart in memory, their
  /// commands, is brought near ahead of time.
  template <typename Visit>
  void ForEachRecord(Visit visit) const {
    constexpr std::size_t kTextAhead = 8;
    constexpr std::size_t kEndAhead = 2 * kTextAhead;
    for (std::size_t n = 0; n < entries_.size(); ++n) {
      if (n + kEndAhead < entries_.size()) {
        commands_.PrefetchEnd(entries_[n + kEndAhead].command);
        commands_.PrefetchText(entries_[n + kTextAhead].command);
      }
      visit((*this)[n]);
    }
  }

 private:
  // Counts a PERFORM of command `command`, which may be new.
  void CountOne(NameTable::Id command) {
    if (command == times_.size()) {
      times_.push_back(0);
    }
    ++times_[command];
    ++count_;
  }

  NameTable commands_;
  std::vector<std::uint64_t> times_;  ///< by command
  std::uint64_t count_ = 0;
  NameTable types_;
  NumberTexts numbers_;
  ChunkList<Record::Entry> entries_;
};

}  // namespace ptick
