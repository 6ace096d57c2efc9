#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "profile/name_table.h"
#include "profile/ordinary_number.h"

namespace ptick {

/// A merge key without its prefix "PROFILE:", taken apart: nearly all keys of a big profile end in
/// a line number, behind one of few programs.
struct MergeKey {
  static constexpr std::uint32_t kNoNumber = std::numeric_limits<std::uint32_t>::max();

  std::string_view Head;  ///< the text before the number's TAB, or all of it without a number
  std::uint32_t Number = kNoNumber;  ///< the last field, when it is an ordinary number

  bool operator==(const MergeKey&) const = default;
};

/// Takes the text of a key apart. Equal texts give equal keys, different ones different keys.
/// `last_tab` is the place of its last TAB, or npos.
inline MergeKey DivideKey(std::string_view text, std::string_view::size_type last_tab) {
  if (last_tab != std::string_view::npos) {
    const std::optional<std::uint32_t> number = ParseOrdinary(text.substr(last_tab + 1));
    if (number && *number != MergeKey::kNoNumber) {
      return {text.substr(0, last_tab), *number};
    }
  }
  return {text, MergeKey::kNoNumber};
}

/// Distinct merge keys, numbered from 0 in order of first appearance: `MergeKeys`.
class MergeKeys {
 public:
  using Id = std::uint32_t;

  MergeKeys();

  /// A lookup on its way. A big table lies far away in memory, so that lookups are made in batches,
  /// step by step: each step brings near what the next one needs.
  struct Lookup {
    MergeKey Key;
    std::uint64_t HeadHash = 0;
    NameTable::Id LikelyHead = 0;
    NameTable::Id Head = 0;
    std::uint64_t Hash = 0;
    Id LikelyId = 0;  ///< after the last step: the number of the key, if it has one
  };
  void StartLookup(Lookup& lookup) const;
  /// Whether the heads are too many to be near; the next two steps are of use only then.
  bool HasManyHeads() const { return heads_.size() > 10000; }
  void FindLikelyHead(Lookup& lookup) const;
  void FetchLikelyHead(const Lookup& lookup) const { heads_.PrefetchText(lookup.LikelyHead); }
  void InternHead(Lookup& lookup);
  void FindLikelyId(Lookup& lookup) const;

  /// The number of the key, given at its first appearance; after all steps.
  Id Intern(const Lookup& lookup);
  /// The same without the steps.
  Id Intern(const MergeKey& key);

  /// Whether `id` is the number of `key`.
  bool Is(Id id, const MergeKey& key) const {
    return id < keys_.size() && keys_[id].Number == key.Number &&
           heads_.Is(keys_[id].Head, key.Head);
  }

  std::size_t size() const { return keys_.size(); }  // NOLINT(readability-identifier-naming)

  /// Appends the text of a key.
  void AppendText(Id id, std::string& out) const;

 private:
  struct Key {
    NameTable::Id Head;
    std::uint32_t Number;

    bool operator==(const Key&) const = default;
  };

  /// A place in the open-addressing index, as small as can be, for the index of a big merge is what
  /// lookups wait for: the number of a key plus 1 in the low bits, which have room for half as many
  /// as there are slots, and bits of its hash above them, compared before the key; 0 is free.
  using Slot = std::uint32_t;

  static std::uint64_t Hash(Key key);
  std::size_t FirstSlot(std::uint64_t hash) const { return hash >> (64 - slot_bits_); }
  std::size_t NextSlot(std::size_t slot) const { return (slot + 1) & (slots_.size() - 1); }
  Slot CheckOf(std::uint64_t hash) const { return static_cast<Slot>(hash) << slot_bits_; }
  bool Checks(Slot slot, std::uint64_t hash) const {
    return slot >> slot_bits_ == CheckOf(hash) >> slot_bits_;
  }
  Id IdIn(Slot slot) const { return (slot & ((Slot{1} << slot_bits_) - 1)) - 1; }
  void Grow();

  NameTable heads_;
  std::vector<Key> keys_;
  std::vector<Slot> slots_;
  unsigned slot_bits_;
};

}  // namespace ptick
