#pragma once

#include <array>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string_view>
#include <vector>

#include "parallel/piece_work.h"
#include "profile/merge/merge_part.h"
#include "value/byte_buffer.h"

namespace ptick {

/// Gives the next block of the text to be merged, as LineBlocks hands them out, in exchange for the
/// memory of the last argument; empty at the end. Called by one thread at a time, any of them.
using BlockSource = std::function<std::string_view(ByteBuffer&)>;

/// A merge by several threads. Each key belongs to one of the parts, by its number, and each part
/// takes the lines of its keys in their order: whatever their values, they are combined as one
/// thread does it.
///
/// Blocks are gathered to a lot. Some threads sort the lines of its blocks by parts; when that is
/// done, others put them into the parts, while the blocks of the next lot are sorted.
class SharedMerge final : public PieceWork {
 public:
  SharedMerge(BlockSource source, std::vector<MergePart>& parts, unsigned threads);

  bool Begin(std::size_t slot) override;
  void Do(std::size_t slot, unsigned thread) override;
  bool Finish(std::size_t /*slot*/) override { return true; }

 private:
  /// So much text makes a lot, and so many blocks: two lots are a small part of the memory that big
  /// merges take.
  static constexpr std::size_t kLotBytes = std::size_t{1} << 19U;
  static constexpr std::size_t kLotBlocks = 64;

  struct Lot {
    std::vector<SortedBlock> blocks = std::vector<SortedBlock>(kLotBlocks);
    std::size_t block_count = 0;
    std::size_t bytes = 0;
  };

  /// What is done in a slot: a block is sorted, or a part takes its lines of a lot.
  struct Piece {
    Lot* lot = nullptr;
    SortedBlock* block = nullptr;  ///< null: the part takes its lines
    std::size_t part = 0;
  };

  bool BeginBlock(Piece& piece);
  void WaitUntilNoneIsInWork();

  BlockSource source_;
  std::vector<MergePart>& parts_;
  std::array<Lot, 2> lots_;
  std::size_t lot_ = 0;            ///< the one that blocks come to
  std::size_t parts_to_take_ = 0;  ///< that have not begun to take the lot
  bool has_ended_ = false;
  std::vector<Piece> pieces_;  ///< by slot

  std::mutex mutex_;
  std::condition_variable done_;
  std::size_t pieces_in_work_ = 0;
};

}  // namespace ptick
