#include "profile/merge_keys.h"

#include <array>
#include <charconv>

namespace ptick {

namespace {

constexpr unsigned kFirstSlotBits = 6;

}  // namespace

MergeKeys::MergeKeys() : slots_(std::size_t{1} << kFirstSlotBits), slot_bits_(kFirstSlotBits) {}

std::uint64_t MergeKeys::Hash(Key key) {
  constexpr std::uint64_t kOdd = 0x9E3779B97F4A7C15U;
  const std::uint64_t word = std::uint64_t{key.Head} << 32U | key.Number;
  const std::uint64_t mixed = (word ^ word >> 29U) * kOdd;
  return (mixed ^ mixed >> 32U) * kOdd;
}

void MergeKeys::StartLookup(Lookup& lookup) const {
  lookup.HeadHash = HashName(lookup.Key.Head);
  heads_.PrefetchSlot(lookup.HeadHash);
}

void MergeKeys::FindLikelyHead(Lookup& lookup) const {
  lookup.LikelyHead = heads_.LikelyId(lookup.HeadHash);
  heads_.PrefetchEnd(lookup.LikelyHead);
}

void MergeKeys::InternHead(Lookup& lookup) {
  lookup.Head = heads_.Intern(lookup.Key.Head, lookup.HeadHash);
  lookup.Hash = Hash({lookup.Head, lookup.Key.Number});
  __builtin_prefetch(&slots_[FirstSlot(lookup.Hash)]);
}

void MergeKeys::FindLikelyId(Lookup& lookup) const {
  for (std::size_t slot = FirstSlot(lookup.Hash); slots_[slot] != 0; slot = NextSlot(slot)) {
    if (Checks(slots_[slot], lookup.Hash)) {
      lookup.LikelyId = IdIn(slots_[slot]);
      __builtin_prefetch(&keys_[lookup.LikelyId]);
      return;
    }
  }
}

MergeKeys::Id MergeKeys::Intern(const Lookup& lookup) {
  const Key key = {lookup.Head, lookup.Key.Number};
  std::size_t slot = FirstSlot(lookup.Hash);
  for (; slots_[slot] != 0; slot = NextSlot(slot)) {
    if (Checks(slots_[slot], lookup.Hash) && keys_[IdIn(slots_[slot])] == key) {
      return IdIn(slots_[slot]);
    }
  }
  keys_.push_back(key);
  slots_[slot] = CheckOf(lookup.Hash) | static_cast<Slot>(keys_.size());
  if (2 * keys_.size() >= slots_.size()) {
    Grow();
  }
  return static_cast<Id>(keys_.size() - 1);
}

MergeKeys::Id MergeKeys::Intern(const MergeKey& key) {
  Lookup lookup = {.Key = key};
  StartLookup(lookup);
  InternHead(lookup);
  return Intern(lookup);
}

void MergeKeys::AppendText(Id id, std::string& out) const {
  const Key& key = keys_[id];
  out += heads_[key.Head];
  if (key.Number != MergeKey::kNoNumber) {
    std::array<char, 12> digits;  // NOLINT(*-member-init): written by to_chars
    digits.front() = '\t';
    const auto end = std::to_chars(digits.begin() + 1, digits.end(), key.Number).ptr;
    out.append(digits.data(), static_cast<std::size_t>(end - digits.data()));
  }
}

void MergeKeys::Grow() {
  slots_ = std::vector<Slot>(2 * slots_.size());
  ++slot_bits_;
  Slot mark = 0;
  for (const Key& key : keys_) {
    const std::uint64_t hash = Hash(key);
    std::size_t slot = FirstSlot(hash);
    while (slots_[slot] != 0) {
      slot = NextSlot(slot);
    }
    slots_[slot] = CheckOf(hash) | ++mark;
  }
}

}  // namespace ptick
