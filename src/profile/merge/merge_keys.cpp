#include "profile/merge/merge_keys.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <new>

namespace ptick {

namespace {

constexpr unsigned kFirstSlotBits = 6;
constexpr unsigned kMaxSlotBits = 31;

// With more heads than this their texts are not in the cache either.
constexpr std::size_t kManyHeads = 10000;

}  // namespace

MergeKeys::MergeKeys(std::pmr::memory_resource* memory, const HashSecret& secret)
    : secret_(secret),
      heads_(secret),
      entries_(memory),
      slots_(std::size_t{1} << kFirstSlotBits, memory),
      slot_bits_(kFirstSlotBits) {}

void MergeKeys::Intern(std::span<const MergeKey> keys, Id* ids) {
  std::array<Lookup, kBatch> batch;  // NOLINT(*-member-init): filled step by step
  for (std::size_t start = 0; start < keys.size(); start += kBatch) {
    const std::span<const MergeKey> some =
        keys.subspan(start, std::min(kBatch, keys.size() - start));
    const std::span<Lookup> lookups = std::span(batch).first(some.size());
    StartBatch(some, lookups);
    EndBatch(lookups, [&ids](Id id) { *ids++ = id; });
  }
}

MergeKeys::Id MergeKeys::Intern(const MergeKey& key) {
  Lookup lookup;  // NOLINT(*-member-init): filled step by step
  Start(lookup, {heads_.Intern(key.head), key.number});
  return FindOrAdd(lookup);
}

void MergeKeys::StartBatch(std::span<const MergeKey> keys, std::span<Lookup> lookups) {
  std::array<HeadLookup, kBatch> heads;  // NOLINT(*-member-init): filled step by step
  for (std::size_t i = 0; i < keys.size(); ++i) {
    heads[i].hash = heads_.Hash(keys[i].head);
    heads_.PrefetchSlot(heads[i].hash);
  }
  if (heads_.size() > kManyHeads) {
    for (HeadLookup& head : std::span(heads).first(keys.size())) {
      head.likely_id = heads_.LikelyId(head.hash);
      heads_.PrefetchEnd(head.likely_id);
    }
    for (const HeadLookup& head : std::span(heads).first(keys.size())) {
      heads_.PrefetchText(head.likely_id);
    }
  }
  for (std::size_t i = 0; i < keys.size(); ++i) {
    Start(lookups[i], {heads_.Intern(keys[i].head, heads[i].hash), keys[i].number});
  }
}

MergeKeys::Id MergeKeys::FindOrAdd(const Lookup& lookup) {
  std::size_t slot = FirstSlot(lookup.hash);
  for (; slots_[slot] != 0; slot = NextSlot(slot)) {
    if (MatchesHash(slots_[slot], lookup.hash) && Is(IdOf(slots_[slot]), lookup.key)) {
      return IdOf(slots_[slot]);
    }
  }
  entries_.push_back({lookup.key, 0});
  slots_[slot] = HashBitsOf(lookup.hash) | static_cast<Slot>(entries_.size());
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
  if (slot_bits_ == kMaxSlotBits) {
    throw std::bad_alloc();
  }
  slots_ = std::pmr::vector<Slot>(2 * slots_.size(), slots_.get_allocator());
  ++slot_bits_;
  Slot id_plus_1 = 0;
  for (const Entry& entry : entries_) {
    const std::uint64_t hash = HashOf(entry.key);
    std::size_t slot = FirstSlot(hash);
    while (slots_[slot] != 0) {
      slot = NextSlot(slot);
    }
    slots_[slot] = HashBitsOf(hash) | ++id_plus_1;
  }
}

}  // namespace ptick
