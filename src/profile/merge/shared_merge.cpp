#include "profile/merge/shared_merge.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace ptick {

SharedMerge::SharedMerge(BlockSource source, std::vector<MergePart>& parts, const ThreadPlan& plan)
    : source_(std::move(source)), parts_(parts), pieces_(SlotsFor(plan.threads)) {
  for (unsigned thread = 0; thread < plan.threads; ++thread) {
    heads_.emplace_back(plan.merge_names);
  }
  for (Lot& lot : lots_) {
    lot.blocks.resize(std::size_t{plan.threads} * kLotBlocks);
  }
}

// Pieces begin in this order: the blocks of lots 0 and 1, the parts that take lot 0, the blocks of
// lot 2, the parts that take lot 1, and so on.
bool SharedMerge::Begin(std::size_t slot) {
  Piece& piece = pieces_[slot];
  if (parts_to_take_ == 0) {
    if (BeginBlock(piece)) {
      return true;
    }
    if (!BeginToTake()) {
      return false;
    }
  }
  piece = {&LotAt(taken_), nullptr};
  if (--parts_to_take_ == 0) {
    ++taken_;
  }
  CountAsInWork(*piece.lot);
  return true;
}

// False at the end of the text, and where a lot is to be taken first.
bool SharedMerge::BeginBlock(Piece& piece) {
  if (has_ended_) {
    return false;
  }
  if (IsFull(LotAt(filled_))) {
    if (filled_ > taken_) {
      return false;
    }
    ++filled_;
    LotAt(filled_).block_count = 0;
    LotAt(filled_).bytes = 0;
  }
  Lot& lot = LotAt(filled_);
  SortedBlock& block = lot.blocks[lot.block_count];
  block.text = source_(block.memory);
  has_ended_ = block.text.empty();
  if (has_ended_) {
    return false;
  }
  ++lot.block_count;
  lot.bytes += block.text.size();
  piece = {&lot, &block};
  CountAsInWork(lot);
  return true;
}

// Its blocks must have been sorted, and the parts must have taken the lot before. False where no
// lot is left, and where one of those has failed: what it left is not for others.
bool SharedMerge::BeginToTake() {
  if (taken_ > filled_ || LotAt(taken_).block_count == 0) {
    return false;
  }
  Lot& lot = LotAt(taken_);
  std::unique_lock lock(mutex_);
  done_.wait(lock, [&] { return lot.in_work + (taken_ > 0 ? LotAt(taken_ - 1).in_work : 0) == 0; });
  if (has_failed_) {
    return false;
  }
  lot.parts.resize(parts_.size());
  std::iota(lot.parts.begin(), lot.parts.end(), std::size_t{0});
  parts_to_take_ = parts_.size();
  return true;
}

void SharedMerge::CountAsInWork(Lot& lot) {
  const std::scoped_lock lock(mutex_);
  ++lot.in_work;
}

void SharedMerge::Do(std::size_t slot, unsigned thread) {
  const Piece& piece = pieces_[slot];
  try {
    DoPiece(piece, thread);
  } catch (...) {
    EndPiece(*piece.lot, true);
    throw;
  }
  EndPiece(*piece.lot, false);
}

void SharedMerge::EndPiece(Lot& lot, bool has_failed) {
  {
    const std::scoped_lock lock(mutex_);
    --lot.in_work;
    has_failed_ = has_failed_ || has_failed;
  }
  done_.notify_all();
}

void SharedMerge::DoPiece(const Piece& piece, unsigned thread) {
  if (piece.block != nullptr) {
    piece.block->thread = thread;
    SortByParts(*piece.block, parts_.size(), heads_[thread]);
  } else {
    const std::size_t part = ChoosePart(*piece.lot, thread);
    parts_[part].TakeLines(std::span(piece.lot->blocks).first(piece.lot->block_count), part,
                           heads_);
    parts_[part].EndLot();
  }
}

// A part whose tables are in this thread's cache, where there is one.
std::size_t SharedMerge::ChoosePart(Lot& lot, unsigned thread) {
  const std::scoped_lock lock(mutex_);
  auto chosen = std::ranges::find_if(
      lot.parts, [&](std::size_t part) { return part % heads_.size() == thread; });
  if (chosen == lot.parts.end()) {
    --chosen;
  }
  const std::size_t part = *chosen;
  lot.parts.erase(chosen);
  return part;
}

}  // namespace ptick
