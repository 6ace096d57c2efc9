#include "profile/ticks/name_table.h"

#include <utility>

namespace ptick {

namespace {

constexpr unsigned kFirstSlotBits = 6;

// A small index is kept roomy, for a name is then nearly always found at the first look; a big one
// is kept small.
constexpr std::size_t kBigIndex = std::size_t{1} << 17U;

bool IsFull(std::size_t names, std::size_t slots) {
  return names * (slots < kBigIndex ? 4 : 2) > slots;
}

}  // namespace

NameTable::NameTable(const HashSecret& secret)
    : secret_(secret),
      ends_{0},
      slots_(std::size_t{1} << kFirstSlotBits),
      shift_(32 - kFirstSlotBits) {}

NameTable::Id NameTable::Add(std::string_view name, std::uint32_t hash, std::size_t slot) {
  const Id id = static_cast<Id>(size());
  bytes_.Append(name);
  ends_.push_back(bytes_.size());
  slots_[slot] = {id + 1, hash};
  if (IsFull(size(), slots_.size())) {
    Grow();
  }
  return id;
}

void NameTable::Grow() {
  std::vector<Slot> grown(2 * slots_.size());
  --shift_;
  const std::size_t wrap = grown.size() - 1;
  for (const Slot& old : slots_) {
    if (old.mark == 0) {
      continue;
    }
    std::size_t slot = old.hash >> shift_;
    while (grown[slot].mark != 0) {
      slot = (slot + 1) & wrap;
    }
    grown[slot] = old;
  }
  slots_ = std::move(grown);
}

}  // namespace ptick
