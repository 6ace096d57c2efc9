#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory_resource>
#include <span>
#include <vector>

#include "profile/merge/merge_values.h"
#include "profile/merge/sorted_block.h"
#include "profile/merge/thread_programs.h"
#include "value/chunk_list.h"

namespace ptick {

/// The merged values of the keys that belong to a part, and where those keys came first. That is
/// told by lots: text that follows each other, in an order that all parts share.
class MergePart {
 public:
  /// The tables take their memory from `memory`, which must outlive this.
  explicit MergePart(std::pmr::memory_resource* memory) : values_(memory) {}

  /// The one part of a merge by one thread: all of it is one lot.
  explicit MergePart(MergeValues&& values) : values_(std::move(values)) { EndLot(); }

  const MergeValues& Values() const { return values_; }

  /// Takes a key that is new here, with its value, from place `place` of the current lot.
  void TakeKey(const MergeValues& from, MergeKeys::Id key, std::uint32_t place);

  /// Takes the lines of part `part`, which this is, in the blocks of the current lot. `programs`
  /// are those of the threads.
  void TakeLines(std::span<const SortedBlock> blocks, std::size_t part,
                 const std::deque<ThreadPrograms>& programs);

  /// Ends the current lot.
  void EndLot() { lot_ends_.push_back(static_cast<MergeKeys::Id>(values_.Keys().size())); }

  std::size_t LotCount() const { return lot_ends_.size(); }
  /// The first key that is not in the lots up to `lot`.
  MergeKeys::Id EndOfLot(std::size_t lot) const { return lot_ends_[lot]; }
  /// The place in its lot where a key came first; any where there is no other part.
  std::uint32_t PlaceOf(MergeKeys::Id key) const { return places_.size() == 0 ? 0 : places_[key]; }

  /// Nothing is looked up any more.
  void EndLookups() {
    values_.Keys().EndLookups();
    heads_.clear();
  }

 private:
  /// The numbers that the heads of a thread's programs have here, by the programs' numbers.
  using HeadNumbers = std::vector<NameTable::Id>;
  static constexpr NameTable::Id kUnknown = ~NameTable::Id{0};

  /// What one thread has sorted, and what it has met.
  struct Source {
    const SortedBlock* block;
    const ThreadPrograms* programs;
    NameTable::Id* heads;  ///< those of the programs
    std::uint32_t place;   ///< of the block's first line in the lot
  };

  MergeKeys::Key KeyOf(const SortedLine& line, const Source& source);
  const SortedLine* TakeFollowing(const SortedLine* line, const SortedLine* end,
                                  const Source& source);
  const SortedLine* TakeBatch(const SortedLine* line, const SortedLine* end, const Source& source);
  void TakeOther(const MergeLine& line, std::uint32_t place);

  MergeValues values_;
  std::vector<HeadNumbers> heads_;   ///< by thread
  ChunkList<std::uint32_t> places_;  ///< by key
  std::vector<MergeKeys::Id> lot_ends_;

  MergeKeys::Id next_key_ = 0;  ///< the key after the one used last: the likeliest next one
};

}  // namespace ptick
