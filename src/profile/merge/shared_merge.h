#pragma once

#include <array>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <string_view>
#include <vector>

#include "parallel/piece_work.h"
#include "parallel/thread_plan.h"
#include "profile/merge/merge_part.h"
#include "profile/merge/thread_heads.h"
#include "value/byte_buffer.h"

namespace ptick {

/// Gives the next block of the text to be merged, as LineBlocks hands them out, in exchange for the
/// memory of the last argument; empty at the end. Called by one thread at a time, any of them.
using BlockSource = std::function<std::string_view(ByteBuffer&)>;

/// A merge by several threads. Each key belongs to one of the parts, by its number, and each part
/// takes the lines of its keys in their order: whatever their values, they are combined as one
/// thread does it.
///
/// Blocks are gathered to a lot. Some threads sort the lines of its blocks by parts; when those of
/// the next lot have begun, the parts take the lot. So hardly ever does a thread wait for others.
class SharedMerge final : public PieceWork {
 public:
  /// Its pieces are small, but of different lengths: where tables grow they take long.
  static constexpr std::size_t SlotsFor(unsigned threads) { return 16 * std::size_t{threads}; }

  SharedMerge(BlockSource source, std::vector<MergePart>& parts, const ThreadPlan& plan);

  bool Begin(std::size_t slot) override;
  void Do(std::size_t slot, unsigned thread) override;
  bool Finish(std::size_t /*slot*/) override { return true; }

 private:
  /// So much text for each thread makes a lot, or so many blocks: the lots are a small part of the
  /// memory that big merges take.
  static constexpr std::size_t kLotBytes = std::size_t{1} << 18U;
  static constexpr std::size_t kLotBlocks = 32;

  struct Lot {
    std::vector<SortedBlock> blocks;
    std::size_t block_count = 0;
    std::size_t bytes = 0;
    std::size_t in_work = 0;         ///< pieces of the lot that have begun and are not done
    std::vector<std::size_t> parts;  ///< that have not begun to take the lot
  };

  /// What is done in a slot: a block is sorted, or one of the parts takes its lines of a lot.
  struct Piece {
    Lot* lot = nullptr;
    SortedBlock* block = nullptr;  ///< null: a part takes its lines
  };

  Lot& LotAt(std::size_t number) { return lots_[number % lots_.size()]; }
  bool IsFull(const Lot& lot) const {
    return lot.bytes >= kLotBytes * heads_.size() || lot.block_count == lot.blocks.size();
  }
  bool BeginBlock(Piece& piece);
  bool BeginToTake();
  void CountAsInWork(Lot& lot);
  void DoPiece(const Piece& piece, unsigned thread);
  void EndPiece(Lot& lot, bool has_failed);
  std::size_t ChoosePart(Lot& lot, unsigned thread);

  BlockSource source_;
  std::vector<MergePart>& parts_;
  std::deque<ThreadHeads> heads_;  ///< by thread
  std::array<Lot, 3> lots_;        ///< one is taken, one is sorted, and one is filled
  std::size_t filled_ = 0;         ///< the number of the lot that is filled
  std::size_t taken_ = 0;          ///< the number of the one that parts take next
  std::size_t parts_to_take_ = 0;
  bool has_ended_ = false;
  std::vector<Piece> pieces_;  ///< by slot

  std::mutex mutex_;  ///< guards what follows, and what lots say of their pieces and parts
  bool has_failed_ = false;
  std::condition_variable done_;
};

}  // namespace ptick
