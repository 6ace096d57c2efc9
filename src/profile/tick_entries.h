#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "profile/name_table.h"
#include "value/dynamic_array.h"

namespace ptick {

/// One trace entry, compact. A line number and a tick count that are written the ordinary way are
/// held as numbers; other texts ("007", "1.50", "abc", empty) are kept aside exactly as they were
/// read.
struct TickEntry {
  static constexpr std::uint32_t kExactText = std::uint32_t{1} << 31U;

  NameTable::Id Program;
  std::uint32_t Line;   ///< the line number, or kExactText plus the index of the exact texts
  std::uint32_t Ticks;  ///< the tick count; 0 where it is no whole number below 2^32

  bool HasExactText() const { return (Line & kExactText) != 0; }
  std::size_t ExactIndex() const { return Line & ~kExactText; }
};

/// A fixed number of entries in one piece of memory.
class TickEntryBlock {
 public:
  TickEntryBlock() = default;
  explicit TickEntryBlock(std::size_t size)
      : entries_(std::make_unique_for_overwrite<TickEntry[]>(size)), size_(size) {}  // NOLINT

  std::span<TickEntry> Entries() { return {entries_.get(), size_}; }
  std::span<const TickEntry> Entries() const { return {entries_.get(), size_}; }

 private:
  std::unique_ptr<TickEntry[]> entries_;  // NOLINT(modernize-avoid-c-arrays): left uninitialised
  std::size_t size_ = 0;
};

/// Entries in order of arrival, collected in chunks so that growing copies nothing.
class TickEntries {
 public:
  void Add(TickEntry entry) {
    if (used_ == kChunk) {
      AddChunk();
    }
    last_[used_++] = entry;
    ticks_seen_ |= entry.Ticks;
  }

  /// The entries by ticks in `order`, equal ticks in reverse order of arrival; with more than one
  /// program by program first, ascending. Leaves nothing behind here.
  TickEntryBlock TakeOrdered(LocateOrder order, std::size_t program_count);

 private:
  static constexpr std::size_t kChunk = std::size_t{1} << 16U;

  void AddChunk();

  std::vector<TickEntryBlock> chunks_;
  TickEntry* last_ = nullptr;     ///< the last chunk's entries
  std::size_t used_ = kChunk;     ///< how many of them are in use
  std::uint32_t ticks_seen_ = 0;  ///< all tick counts or-ed together: how many digits a sort needs
};

}  // namespace ptick
