#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory_resource>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "profile/scan/ordinary_number.h"
#include "profile/ticks/name_table.h"

namespace ptick {

/// A merge key without its prefix "PROFILE:", taken apart: nearly all keys of a big profile end in
/// a line number, behind one of few programs.
struct MergeKey {
  static constexpr std::uint32_t kNoNumber = std::numeric_limits<std::uint32_t>::max();

  std::string_view head;  ///< the text before the number's TAB, or all of it without a number
  std::uint32_t number = kNoNumber;  ///< the last field, when it is an ordinary number

  bool operator==(const MergeKey&) const = default;
};

/// Takes the text of a key apart. Equal texts give equal keys, different ones different keys.
inline MergeKey DivideKey(std::string_view text) {
  if (const auto tab = text.rfind('\t'); tab != std::string_view::npos) {
    const std::optional<std::uint32_t> number = ParseOrdinary(text.substr(tab + 1));
    if (number && *number != MergeKey::kNoNumber) {
      return {text.substr(0, tab), *number};
    }
  }
  return {text, MergeKey::kNoNumber};
}

/// Distinct merge keys, numbered from 0 in order of first appearance: `MergeKeys`. Each has a cell
/// for its value beside it, where it is near as soon as the key has been found.
class MergeKeys {
 public:
  using Id = std::uint32_t;

  MergeKeys();

  /// A lookup on its way. A big table lies far away in memory, so that lookups are made in batches,
  /// step by step: each step brings near what the next one needs.
  class Lookup {
    friend class MergeKeys;

    MergeKey key_;
    std::uint64_t head_hash_;
    NameTable::Id likely_head_;  ///< after FindLikelyHead
    NameTable::Id head_;         ///< after InternHead
    std::uint64_t hash_;         ///< after InternHead
    Id likely_id_;               ///< after FindLikelyId: the number of the key, if it has one
  };
  Lookup StartLookup(const MergeKey& key) const {
    Lookup lookup;
    lookup.key_ = key;
    lookup.head_hash_ = HashName(key.head);
    heads_.PrefetchSlot(lookup.head_hash_);
    return lookup;
  }
  /// Whether the heads are too many to be near; the next two steps are of use only then.
  bool HasManyHeads() const { return heads_.size() > 10000; }
  void FindLikelyHead(Lookup& lookup) const {
    lookup.likely_head_ = heads_.LikelyId(lookup.head_hash_);
    heads_.PrefetchEnd(lookup.likely_head_);
  }
  void FetchLikelyHead(const Lookup& lookup) const { heads_.PrefetchText(lookup.likely_head_); }
  void InternHead(Lookup& lookup) {
    lookup.head_ = heads_.Intern(lookup.key_.head, lookup.head_hash_);
    lookup.hash_ = Hash({lookup.head_, lookup.key_.number});
    __builtin_prefetch(&slots_[FirstSlot(lookup.hash_)]);
  }
  void FindLikelyId(Lookup& lookup) const {
    lookup.likely_id_ = 0;
    for (std::size_t slot = FirstSlot(lookup.hash_); slots_[slot] != 0; slot = NextSlot(slot)) {
      if (Checks(slots_[slot], lookup.hash_)) {
        lookup.likely_id_ = IdIn(slots_[slot]);
        break;
      }
    }
    __builtin_prefetch(entries_.data() + lookup.likely_id_);
  }
  /// The number of the key, given at its first appearance; after all steps.
  Id Intern(const Lookup& lookup) {
    if (lookup.likely_id_ < size() && IsAt(lookup.likely_id_, lookup)) {
      return lookup.likely_id_;
    }
    return FindOrAdd(lookup);
  }

  /// The same without the steps.
  Id Intern(const MergeKey& key) {
    Lookup lookup = StartLookup(key);
    InternHead(lookup);
    return FindOrAdd(lookup);
  }

  /// Whether `id` is the number of `key`.
  bool Is(Id id, const MergeKey& key) const {
    return id < size() && entries_[id].key.number == key.number &&
           heads_.Is(entries_[id].key.head, key.head);
  }

  /// The cell beside a key, 0 at first.
  std::int64_t& CellOf(Id id) { return entries_[id].cell; }

  std::size_t size() const { return entries_.size(); }

  /// Appends the text of a key.
  void AppendText(Id id, std::string& out) const;

 private:
  struct Key {
    NameTable::Id head;
    std::uint32_t number;

    bool operator==(const Key&) const = default;
  };

  struct Entry {
    MergeKeys::Key key;
    std::int64_t cell;
  };

  /// A place in the open-addressing index, as small as can be, for the index of a big merge is what
  /// lookups wait for: the number of a key plus 1 in the low bits, which have room for half as many
  /// as there are slots, and bits of its hash above them, compared before the key; 0 is free.
  using Slot = std::uint32_t;

  static std::uint64_t Hash(Key key) {
    constexpr std::uint64_t kOdd = 0x9E3779B97F4A7C15U;
    const std::uint64_t word = std::uint64_t{key.head} << 32U | key.number;
    const std::uint64_t mixed = (word ^ word >> 29U) * kOdd;
    return (mixed ^ mixed >> 32U) * kOdd;
  }
  std::size_t FirstSlot(std::uint64_t hash) const { return hash >> (64 - slot_bits_); }
  std::size_t NextSlot(std::size_t slot) const { return (slot + 1) & (slots_.size() - 1); }
  Slot CheckOf(std::uint64_t hash) const { return static_cast<Slot>(hash) << slot_bits_; }
  bool Checks(Slot slot, std::uint64_t hash) const {
    return slot >> slot_bits_ == CheckOf(hash) >> slot_bits_;
  }
  Id IdIn(Slot slot) const { return (slot & ((Slot{1} << slot_bits_) - 1)) - 1; }
  bool IsAt(Id id, const Lookup& lookup) const {
    return entries_[id].key == Key{lookup.head_, lookup.key_.number};
  }
  Id FindOrAdd(const Lookup& lookup);
  void Grow();

  NameTable heads_;
  std::pmr::vector<Entry> entries_;
  std::pmr::vector<Slot> slots_;
  unsigned slot_bits_;
};

}  // namespace ptick
