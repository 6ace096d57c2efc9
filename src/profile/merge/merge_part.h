#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory_resource>
#include <span>
#include <string_view>
#include <vector>

#include "profile/merge/merge_line.h"
#include "profile/merge/merge_values.h"
#include "profile/merge/thread_heads.h"
#include "value/byte_buffer.h"

namespace ptick {

/// A line of a block that belongs to a part: a trace line in its usual form, but for the two kinds
/// that are marked in `head`.
struct SortedLine {
  /// A trace line whose head has no number: `number` is the place of its key in the block's `keys`.
  static constexpr NameTable::Id kByText = ThreadHeads::kNone;
  /// A line in another form: `number` is its place in the block's `others`.
  static constexpr NameTable::Id kOther = kByText - 1;

  NameTable::Id head;  ///< the number that the thread which sorted the block has for it
  std::uint32_t number;
  std::uint32_t ticks;
  std::uint32_t place;  ///< among the merged lines of the block
};

/// A block whose lines are sorted by the parts that they belong to.
struct SortedBlock {
  ByteBuffer memory;
  std::string_view text;
  std::vector<std::vector<SortedLine>> lines;  ///< by part, in order
  std::vector<MergeKey> keys;
  std::vector<MergeLine> others;
  std::uint32_t line_count = 0;  ///< of all parts
  unsigned thread = 0;           ///< that has sorted the lines
  std::size_t head_count = 0;    ///< how many heads it had met then
};

/// Sorts the lines of `block.text`, which is as LineBlocks hands it out. `heads` are those of this
/// thread.
void SortByParts(SortedBlock& block, std::size_t parts, ThreadHeads& heads);

/// The part that a key belongs to.
std::size_t PartOf(const MergeKey& key, std::size_t parts);

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

  /// Takes the lines of part `part`, which this is, in the blocks of the current lot. `heads` are
  /// those of the threads.
  void TakeLines(std::span<const SortedBlock> blocks, std::size_t part,
                 const std::deque<ThreadHeads>& heads);

  /// Ends the current lot.
  void EndLot() { lot_ends_.push_back(static_cast<MergeKeys::Id>(values_.Keys().size())); }

  std::size_t LotCount() const { return lot_ends_.size(); }
  /// The first key that is not in the lots up to `lot`.
  MergeKeys::Id EndOfLot(std::size_t lot) const { return lot_ends_[lot]; }
  /// The place in its lot where a key came first; any where there is no other part.
  std::uint32_t PlaceOf(MergeKeys::Id key) const { return places_.empty() ? 0 : places_[key]; }

  /// Nothing is looked up any more.
  void EndLookups() {
    values_.Keys().EndLookups();
    heads_.clear();
  }

 private:
  /// What a thread's numbers of heads are here, by those numbers.
  using HeadNumbers = std::vector<NameTable::Id>;
  static constexpr NameTable::Id kUnknown = ~NameTable::Id{0};

  /// What one thread has sorted, and what it has met.
  struct Source {
    const SortedBlock* block;
    const ThreadHeads* heads;
    HeadNumbers* known;
    std::uint32_t place;  ///< of the block's first line in the lot
  };

  MergeKeys::Key KeyOf(const SortedLine& line, const Source& source);
  const SortedLine* TakeFollowing(const SortedLine* line, const SortedLine* end,
                                  const Source& source);
  const SortedLine* TakeBatch(const SortedLine* line, const SortedLine* end, const Source& source);
  void TakeOther(const MergeLine& line, std::uint32_t place);

  MergeValues values_;
  std::vector<HeadNumbers> heads_;     ///< by thread
  std::vector<std::uint32_t> places_;  ///< by key
  std::vector<MergeKeys::Id> lot_ends_;

  MergeKeys::Id next_key_ = 0;  ///< the key after the one used last: the likeliest next one
};

}  // namespace ptick
