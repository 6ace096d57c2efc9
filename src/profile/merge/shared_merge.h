#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <string_view>
#include <vector>

#include "parallel/piece_work.h"
#include "parallel/thread_plan.h"
#include "profile/merge/merge_part.h"
#include "profile/merge/thread_programs.h"
#include "records/record_range.h"
#include "value/byte_buffer.h"

namespace ptick {

/// A piece of the text to be merged, on its way to become a block.
struct MergeText {
  std::string_view block;  ///< as LineBlocks hands them out
  ByteBuffer memory;       ///< where it is
  ByteRange range;         ///< of the record that it is to be read from, where there is one
  std::size_t size = 0;    ///< in bytes, about
};

/// Where the text to be merged comes from.
class MergeSource {
 public:
  MergeSource() = default;
  MergeSource(const MergeSource&) = delete;
  MergeSource& operator=(const MergeSource&) = delete;
  virtual ~MergeSource() = default;

  /// Begins the next piece of the text; false at the end. What its memory was used for is no longer
  /// needed. Called by one thread at a time, any of them.
  virtual bool Begin(MergeText& text) = 0;

  /// Reads a piece that has begun, where its block is still empty. By any thread, several at a
  /// time.
  virtual void Read(MergeText& /*text*/) {}
};

/// A merge by several threads. Each key belongs to one of the parts, by its number, and each part
/// takes the lines of its keys in their order: whatever their values, they are combined as one
/// thread does it.
///
/// The lines of a block are sorted by parts, and blocks are gathered to lots, which each part takes
/// one after the other. A part whose tables grow takes long for one; the others are some lots ahead
/// of it then, so that hardly ever does a thread wait.
class SharedMerge final : public PieceWork {
 public:
  /// Its pieces are small, and many of them are done while one part grows.
  static constexpr std::size_t SlotsFor(unsigned threads) { return 64 * std::size_t{threads}; }

  SharedMerge(MergeSource& source, std::vector<MergePart>& parts, const ThreadPlan& plan);

  bool Begin(std::size_t slot) override;
  void Do(std::size_t slot, unsigned thread) override;
  bool Finish(std::size_t /*slot*/) override { return true; }

 private:
  /// So much text for each thread makes a lot, or so many blocks.
  static constexpr std::size_t kLotBytes = std::size_t{1} << 18U;
  static constexpr std::size_t kLotBlocks = 32;
  /// So many lots are there at a time: as much as others do while the tables of a part grow.
  static constexpr std::size_t kLots = 6;

  struct Lot {
    std::vector<SortedBlock> blocks;
    std::size_t block_count = 0;
    std::size_t bytes = 0;           ///< of their text, about
    std::size_t blocks_in_work = 0;  ///< that are not sorted yet
    std::size_t parts_left = 0;      ///< that have not taken it yet
  };

  /// What is done in a slot: a block is sorted, or, where there is none, a part takes a lot.
  struct Piece {
    Lot* lot = nullptr;
    SortedBlock* block = nullptr;
    MergeText text;
  };

  struct Progress {
    std::size_t lots_taken = 0;
    bool is_taking = false;  ///< one more
  };

  using Lock = std::unique_lock<std::mutex>;

  bool BeginBlock(Piece& piece, Lock& lock);
  void OpenLot();
  void SortBlock(Piece& piece, unsigned thread);
  void TakeLot(unsigned thread);
  std::size_t ChoosePart(unsigned thread) const;
  Lot& NextLotOf(std::size_t part);

  bool CanTake(const Progress& part) const;
  bool CanTakeOneMore() const;
  bool CanSortOneMore() const { return !has_ended_ && (filled_ != nullptr || !free_lots_.empty()); }
  bool IsAllBegun() const { return has_ended_ && takes_begun_ == lot_count_ * parts_.size(); }

  MergeSource& source_;
  std::vector<MergePart>& parts_;
  std::deque<ThreadPrograms> programs_;  ///< by thread
  std::vector<Piece> pieces_;            ///< by slot

  std::mutex mutex_;  ///< guards what follows
  std::condition_variable changed_;
  std::vector<Progress> progress_;  ///< by part
  std::vector<Lot> lot_memory_;     ///< the lots that there can be at a time
  std::vector<Lot*> free_lots_;     ///< the one used last at the end: it is in the cache
  std::deque<Lot*> lots_;           ///< those that not all parts have taken, in order
  std::size_t lot_count_ = 0;       ///< with those that all have taken
  Lot* filled_ = nullptr;           ///< the last lot, if more blocks come to it
  std::vector<ByteBuffer> free_texts_;
  std::size_t takes_begun_ = 0;
  std::size_t takes_waiting_ = 0;  ///< those for which no part has been chosen yet
  bool has_ended_ = false;         ///< the text
  bool has_failed_ = false;
};

}  // namespace ptick
