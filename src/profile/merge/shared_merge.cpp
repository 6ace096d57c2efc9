#include "profile/merge/shared_merge.h"

#include <utility>

namespace ptick {

namespace {

/// A piece of work counts as in work until the end of the scope.
class InWork {
 public:
  InWork(std::mutex& mutex, std::condition_variable& done, std::size_t& pieces)
      : mutex_(mutex), done_(done), pieces_(pieces) {}
  InWork(const InWork&) = delete;
  InWork& operator=(const InWork&) = delete;
  ~InWork() {
    {
      const std::scoped_lock lock(mutex_);
      --pieces_;
    }
    done_.notify_all();
  }

 private:
  std::mutex& mutex_;
  std::condition_variable& done_;
  std::size_t& pieces_;
};

}  // namespace

SharedMerge::SharedMerge(BlockSource source, std::vector<MergePart>& parts, unsigned threads)
    : source_(std::move(source)), parts_(parts), pieces_(SlotsFor(threads)) {}

bool SharedMerge::Begin(std::size_t slot) {
  Piece& piece = pieces_[slot];
  if (parts_to_take_ == 0 && !BeginBlock(piece)) {
    return false;
  }
  if (parts_to_take_ > 0) {
    if (parts_to_take_ == parts_.size()) {
      WaitUntilNoneIsInWork();
    }
    piece = {&lots_[lot_], nullptr, --parts_to_take_};
    if (parts_to_take_ == 0) {
      lot_ = 1 - lot_;
      lots_[lot_].block_count = 0;
      lots_[lot_].bytes = 0;
    }
  }
  const std::scoped_lock lock(mutex_);
  ++pieces_in_work_;
  return true;
}

// Begins with the next block, or where the lot is full, with the parts that are to take it. False
// where there is neither.
bool SharedMerge::BeginBlock(Piece& piece) {
  Lot& lot = lots_[lot_];
  if (!has_ended_ && lot.bytes < kLotBytes && lot.block_count < kLotBlocks) {
    SortedBlock& block = lot.blocks[lot.block_count];
    block.text = source_(block.memory);
    if (!block.text.empty()) {
      ++lot.block_count;
      lot.bytes += block.text.size();
      piece = {&lot, &block, 0};
      return true;
    }
    has_ended_ = true;
  }
  parts_to_take_ = lot.block_count > 0 ? parts_.size() : 0;
  return parts_to_take_ > 0;
}

// Before parts take a lot all its blocks must have been sorted, and they must have taken the lot
// before.
void SharedMerge::WaitUntilNoneIsInWork() {
  std::unique_lock lock(mutex_);
  done_.wait(lock, [this] { return pieces_in_work_ == 0; });
}

void SharedMerge::Do(std::size_t slot, unsigned /*thread*/) {
  const InWork in_work(mutex_, done_, pieces_in_work_);
  const Piece& piece = pieces_[slot];
  if (piece.block != nullptr) {
    SortByParts(*piece.block, parts_.size());
  } else {
    MergePart& part = parts_[piece.part];
    part.TakeLines(std::span(piece.lot->blocks).first(piece.lot->block_count), piece.part);
    part.EndLot();
  }
}

}  // namespace ptick
