#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "profile/ticks/name_table.h"
#include "profile/ticks/number_texts.h"

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

  /// How many PERFORMs there were.
  std::uint64_t Count() const { return count_; }

  /// The distinct commands, in order of first appearance, and how often each was performed.
  const NameTable& Commands() const { return commands_; }
  std::uint64_t TimesOf(NameTable::Id command) const { return times_[command]; }

  /// The records kept, in recorded order; valid until the next Add.
  std::size_t RecordCount() const { return entries_.size(); }
  Record operator[](std::size_t n) const { return {*this, entries_[n]}; }

 private:
  NameTable commands_;
  std::vector<std::uint64_t> times_;  ///< by command
  std::uint64_t count_ = 0;
  NameTable types_;
  NumberTexts numbers_;
  std::vector<Record::Entry> entries_;
};

}  // namespace ptick
