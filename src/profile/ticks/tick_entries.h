#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "profile/ticks/sort_order.h"
#include "profile/ticks/tick_entry.h"
#include "value/dynamic_array.h"

namespace ptick {

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
    ticks_seen_ |= entry.ticks;
  }

  std::size_t size() const { return chunks_.empty() ? 0 : (chunks_.size() - 1) * kChunk + used_; }

  /// Entry `place` in order of arrival, counted from 0.
  const TickEntry& operator[](std::size_t place) const {
    return chunks_[place / kChunk].Entries()[place % kChunk];
  }

  /// Calls `visit` with every entry, in order of arrival.
  template <typename Visit>
  void ForEach(Visit visit) const {
    for (std::size_t chunk = 0; chunk < chunks_.size(); ++chunk) {
      const bool is_last = chunk + 1 == chunks_.size();
      for (const TickEntry& entry : chunks_[chunk].Entries().first(is_last ? used_ : kChunk)) {
        visit(entry);
      }
    }
  }

  /// The entries by ticks in `order`, equal ticks in reverse order of arrival. Empties this
  /// collection.
  TickEntryBlock TakeOrdered(SortOrder order);

 private:
  static constexpr std::size_t kChunk = std::size_t{1} << 16U;

  void AddChunk();

  std::vector<TickEntryBlock> chunks_;
  TickEntry* last_ = nullptr;     ///< the last chunk's entries
  std::size_t used_ = kChunk;     ///< how many of them are in use
  std::uint32_t ticks_seen_ = 0;  ///< all tick counts or-ed together: how many digits a sort needs
};

}  // namespace ptick
