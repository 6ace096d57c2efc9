#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "profile/merge/merge_line.h"
#include "profile/merge/thread_programs.h"
#include "value/byte_buffer.h"

namespace ptick {

/// A line of a block that belongs to a part: a trace line in its usual form, but for the two kinds
/// that are marked in `program`.
struct SortedLine {
  /// A trace line whose program has no number: `number` is the place of its key in the block's
  /// `keys`.
  static constexpr NameTable::Id kByText = ThreadPrograms::kNone;
  /// A line in another form: `number` is its place in the block's `others`.
  static constexpr NameTable::Id kOther = kByText - 1;

  NameTable::Id program;  ///< the number that the thread which sorted the block has for it
  std::uint32_t number;
  std::uint32_t ticks;
  std::uint32_t place;  ///< among the merged lines of the block
};

/// The lines of a block, sorted by the parts that they belong to. What is text in them is its own.
struct SortedBlock {
  std::vector<std::vector<SortedLine>> lines;  ///< by part, in order
  std::vector<MergeKey> keys;
  std::vector<MergeLine> others;
  ByteBuffer texts;               ///< of those keys and lines
  std::uint32_t line_count = 0;   ///< of all parts
  unsigned thread = 0;            ///< that has sorted the lines
  std::size_t program_count = 0;  ///< how many programs it had met then
};

/// Sorts the lines of a block as LineBlocks hands it out. `programs` are those of this thread.
void SortByParts(std::string_view block, std::size_t parts, ThreadPrograms& programs,
                 SortedBlock& sorted);

/// The part that a key belongs to.
std::size_t PartOf(const MergeKey& key, std::size_t parts);

}  // namespace ptick
