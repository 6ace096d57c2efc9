#include "profile/merge/merge_keys.h"

#include <array>
#include <charconv>

namespace ptick {

namespace {

constexpr unsigned kFirstSlotBits = 6;

}  // namespace

MergeKeys::MergeKeys() : slots_(std::size_t{1} << kFirstSlotBits), slot_bits_(kFirstSlotBits) {}

MergeKeys::Id MergeKeys::FindOrAdd(const Lookup& lookup) {
  std::size_t slot = FirstSlot(lookup.hash_);
  for (; slots_[slot] != 0; slot = NextSlot(slot)) {
    if (Checks(slots_[slot], lookup.hash_) && IsAt(IdIn(slots_[slot]), lookup)) {
      return IdIn(slots_[slot]);
    }
  }
  entries_.push_back({{lookup.head_, lookup.key_.number}, 0});
  slots_[slot] = CheckOf(lookup.hash_) | static_cast<Slot>(entries_.size());
  if (2 * entries_.size() >= slots_.size()) {
    Grow();
  }
  return static_cast<Id>(entries_.size() - 1);
}

void MergeKeys::AppendText(Id id, std::string& out) const {
  const Key& key = entries_[id].key;
  out += heads_[key.head];
  if (key.number != MergeKey::kNoNumber) {
    std::array<char, 12> digits;  // NOLINT(*-member-init): written by to_chars
    digits.front() = '\t';
    const auto end = std::to_chars(digits.begin() + 1, digits.end(), key.number).ptr;
    out.append(digits.data(), static_cast<std::size_t>(end - digits.data()));
  }
}

void MergeKeys::Grow() {
  slots_ = std::pmr::vector<Slot>(2 * slots_.size());
  ++slot_bits_;
  Slot mark = 0;
  for (const Entry& entry : entries_) {
    const std::uint64_t hash = Hash(entry.key);
    std::size_t slot = FirstSlot(hash);
    while (slots_[slot] != 0) {
      slot = NextSlot(slot);
    }
    slots_[slot] = CheckOf(hash) | ++mark;
  }
}

}  // namespace ptick
