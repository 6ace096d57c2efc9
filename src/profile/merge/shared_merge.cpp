#include "profile/merge/shared_merge.h"

#include <algorithm>
#include <span>
#include <utility>

namespace ptick {

SharedMerge::SharedMerge(MergeSource& source, std::vector<MergePart>& parts, const ThreadPlan& plan)
    : source_(source),
      parts_(parts),
      pieces_(SlotsFor(plan.threads)),
      progress_(parts.size()),
      lot_memory_(kLots) {
  for (unsigned thread = 0; thread < plan.threads; ++thread) {
    programs_.emplace_back(plan.merge_names);
  }
  for (Lot& lot : lot_memory_) {
    lot.blocks.resize(std::size_t{plan.threads} * kLotBlocks);
    free_lots_.push_back(&lot);
  }
}

// Lots are taken as soon as they can be: so few are on their way.
bool SharedMerge::Begin(std::size_t slot) {
  Lock lock(mutex_);
  for (;;) {
    changed_.wait(lock, [this] {
      return has_failed_ || IsAllBegun() || CanTakeOneMore() || CanSortOneMore();
    });
    if (has_failed_ || IsAllBegun()) {
      return false;
    }
    if (CanTakeOneMore()) {
      pieces_[slot].block = nullptr;
      ++takes_begun_;
      ++takes_waiting_;
      return true;
    }
    if (BeginBlock(pieces_[slot], lock)) {
      return true;
    }
  }
}

// False at the end of the text. No other thread begins a block meanwhile.
bool SharedMerge::BeginBlock(Piece& piece, Lock& lock) {
  if (!free_texts_.empty()) {
    piece.text.memory = std::move(free_texts_.back());
    free_texts_.pop_back();
  }
  lock.unlock();
  const bool has_begun = source_.Begin(piece.text);
  lock.lock();
  if (!has_begun) {
    has_ended_ = true;
    filled_ = nullptr;
    return false;
  }
  if (filled_ == nullptr) {
    OpenLot();
  }
  Lot& lot = *filled_;
  piece.lot = &lot;
  piece.block = &lot.blocks[lot.block_count++];
  lot.bytes += piece.text.size;
  ++lot.blocks_in_work;
  if (lot.bytes >= kLotBytes * programs_.size() || lot.block_count == lot.blocks.size()) {
    filled_ = nullptr;
  }
  return true;
}

void SharedMerge::OpenLot() {
  filled_ = free_lots_.back();
  free_lots_.pop_back();
  filled_->block_count = 0;
  filled_->bytes = 0;
  filled_->parts_left = parts_.size();
  lots_.push_back(filled_);
  ++lot_count_;
}

void SharedMerge::Do(std::size_t slot, unsigned thread) {
  try {
    if (pieces_[slot].block != nullptr) {
      SortBlock(pieces_[slot], thread);
    } else {
      TakeLot(thread);
    }
  } catch (...) {
    {
      const Lock lock(mutex_);
      has_failed_ = true;
    }
    changed_.notify_one();
    throw;
  }
  changed_.notify_one();
}

void SharedMerge::SortBlock(Piece& piece, unsigned thread) {
  piece.block->thread = thread;
  source_.Read(piece.text);
  SortByParts(piece.text.block, parts_.size(), programs_[thread], *piece.block);
  const Lock lock(mutex_);
  --piece.lot->blocks_in_work;
  free_texts_.push_back(std::move(piece.text.memory));
}

void SharedMerge::TakeLot(unsigned thread) {
  Lock lock(mutex_);
  const std::size_t part = ChoosePart(thread);
  --takes_waiting_;
  progress_[part].is_taking = true;
  Lot& lot = NextLotOf(part);
  lock.unlock();
  parts_[part].TakeLines(std::span(lot.blocks).first(lot.block_count), part, programs_);
  parts_[part].EndLot();
  lock.lock();
  progress_[part] = {progress_[part].lots_taken + 1, false};
  if (--lot.parts_left == 0) {  // all have taken those before, too
    lots_.pop_front();
    free_lots_.push_back(&lot);
  }
}

// Best one whose tables are in this thread's cache.
std::size_t SharedMerge::ChoosePart(unsigned thread) const {
  std::size_t chosen = parts_.size();
  for (std::size_t part = 0; part < parts_.size(); ++part) {
    if (CanTake(progress_[part]) &&
        (chosen == parts_.size() || part % programs_.size() == thread)) {
      chosen = part;
    }
  }
  return chosen;
}

SharedMerge::Lot& SharedMerge::NextLotOf(std::size_t part) {
  return *lots_[progress_[part].lots_taken - (lot_count_ - lots_.size())];
}

bool SharedMerge::CanTake(const Progress& part) const {
  if (part.is_taking || part.lots_taken == lot_count_) {
    return false;
  }
  const Lot* const lot = lots_[part.lots_taken - (lot_count_ - lots_.size())];
  return lot != filled_ && lot->blocks_in_work == 0;
}

bool SharedMerge::CanTakeOneMore() const {
  const auto ready =
      std::ranges::count_if(progress_, [this](const Progress& part) { return CanTake(part); });
  return static_cast<std::size_t>(ready) > takes_waiting_;
}

}  // namespace ptick
