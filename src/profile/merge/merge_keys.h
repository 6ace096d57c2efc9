#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory_resource>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "profile/scan/ordinary_number.h"
#include "profile/ticks/name_table.h"

namespace ptick {

/// A merge key without its prefix "PROFILE:", split into a head and a number: nearly all keys of a
/// big profile are one of few programs and a line number.
struct MergeKey {
  static constexpr std::uint32_t kNoNumber = std::numeric_limits<std::uint32_t>::max();

  std::string_view head;  ///< the text before the number's TAB, or all of it without a number
  std::uint32_t number = kNoNumber;  ///< the last field, when it is an ordinary number

  bool operator==(const MergeKey&) const = default;
};

/// Splits the text of a key. Equal texts give equal keys, different ones different keys.
inline MergeKey SplitKey(std::string_view text) {
  if (const auto tab = text.rfind('\t'); tab != std::string_view::npos) {
    const std::optional<std::uint32_t> number = ParseOrdinary(text.substr(tab + 1));
    if (number && *number != MergeKey::kNoNumber) {
      return {text.substr(0, tab), *number};
    }
  }
  return {text, MergeKey::kNoNumber};
}

/// Distinct merge keys, numbered from 0 in order of first appearance: `MergeKeys`. Beside each is a
/// cell for its value: finding the key brings the value into the cache.
///
/// In a big table every step of a lookup misses the cache, so lookups run in batches, one step of
/// all of them at a time; each step prefetches what the next one reads.
class MergeKeys {
 public:
  using Id = std::uint32_t;

  /// So many keys are looked up together: as many as there are misses that the processor can wait
  /// for at once, and some.
  static constexpr std::size_t kBatch = 32;

  /// A key whose head is known by its number in Heads().
  struct Key {
    NameTable::Id head;
    std::uint32_t number;
    bool operator==(const Key&) const = default;
  };

  /// Its tables take their memory from `memory`, which must outlive this.
  explicit MergeKeys(std::pmr::memory_resource* memory = std::pmr::get_default_resource(),
                     const HashSecret& secret = ProcessSecret());

  /// The numbers of keys, each given at its first appearance; `ids` has room for all of them.
  /// Throws std::bad_alloc beyond 2^30 keys.
  void Intern(std::span<const MergeKey> keys, Id* ids);

  /// The same for keys that come one by one: `next_key(key)` sets the next one, or returns false.
  /// Takes at most kBatch of them, then calls `use(id)` for each, in order.
  template <typename NextKey, typename Use>
  void InternEach(const NextKey& next_key, const Use& use) {
    std::array<Lookup, kBatch> batch;  // NOLINT(*-member-init): filled step by step
    std::size_t count = 0;
    for (Key key;  // NOLINT(*-member-init): set by the call
         count < kBatch && next_key(key); ++count) {
      Start(batch[count], key);
    }
    EndBatch(std::span(batch).first(count), use);
  }

  /// The same for one key.
  Id Intern(const MergeKey& key);

  /// Gives back the memory of the index. No key is looked up any more.
  void EndLookups() { slots_ = std::pmr::vector<Slot>(slots_.get_allocator()); }

  /// The distinct heads.
  NameTable& Heads() { return heads_; }
  const NameTable& Heads() const { return heads_; }

  /// Whether `id` is the number of `key`.
  bool Is(Id id, Key key) const { return id < size() && entries_[id].key == key; }
  bool Is(Id id, const MergeKey& key) const {
    return id < size() && entries_[id].key.number == key.number &&
           heads_.Is(entries_[id].key.head, key.head);
  }

  /// The cell beside a key, 0 at first.
  std::int64_t& CellOf(Id id) { return entries_[id].cell; }
  std::int64_t CellOf(Id id) const { return entries_[id].cell; }

  std::size_t size() const { return entries_.size(); }

  /// A key; valid until the next Intern.
  MergeKey KeyOf(Id id) const { return {heads_[entries_[id].key.head], entries_[id].key.number}; }

  Key NumbersOf(Id id) const { return entries_[id].key; }

  /// Appends the text of a key.
  void AppendText(Id id, std::string& out) const;

 private:
  struct Entry {
    Key key;
    std::int64_t cell;
  };

  /// A lookup in progress.
  struct Lookup {
    Key key;
    std::uint64_t hash;
    Id likely_id;
  };

  /// The same of a key whose head is a text.
  struct HeadLookup {
    std::uint32_t hash;
    NameTable::Id likely_id;
  };

  /// A slot of the open-addressing index, 4 bytes because a big merge waits for it. The low
  /// slot_bits_ bits hold the key's number plus 1 (0: free), the rest some bits of its hash, which
  /// are compared before the key.
  using Slot = std::uint32_t;

  std::uint64_t HashOf(Key key) const {
    return HashNumber(std::uint64_t{key.head} << 32U | key.number, secret_);
  }

  std::size_t FirstSlot(std::uint64_t hash) const { return hash >> (64 - slot_bits_); }
  std::size_t NextSlot(std::size_t slot) const { return (slot + 1) & (slots_.size() - 1); }
  Slot HashBitsOf(std::uint64_t hash) const { return static_cast<Slot>(hash) << slot_bits_; }
  bool MatchesHash(Slot slot, std::uint64_t hash) const {
    return slot >> slot_bits_ == HashBitsOf(hash) >> slot_bits_;
  }
  Id IdOf(Slot slot) const { return (slot & ((Slot{1} << slot_bits_) - 1)) - 1; }

  void StartBatch(std::span<const MergeKey> keys, std::span<Lookup> lookups);
  template <typename Use>
  void EndBatch(std::span<Lookup> lookups, const Use& use) {
    for (Lookup& lookup : lookups) {
      FindLikelyId(lookup);
    }
    for (const Lookup& lookup : lookups) {
      const bool is_known = Is(lookup.likely_id, lookup.key);
      use(is_known ? lookup.likely_id : FindOrAdd(lookup));
    }
  }
  void Start(Lookup& lookup, Key key) const {
    lookup.key = key;
    lookup.hash = HashOf(key);
    __builtin_prefetch(&slots_[FirstSlot(lookup.hash)]);
  }
  // The first key with these hash bits, nearly always the right one.
  void FindLikelyId(Lookup& lookup) const {
    lookup.likely_id = 0;
    for (std::size_t slot = FirstSlot(lookup.hash); slots_[slot] != 0; slot = NextSlot(slot)) {
      if (MatchesHash(slots_[slot], lookup.hash)) {
        lookup.likely_id = IdOf(slots_[slot]);
        break;
      }
    }
    __builtin_prefetch(entries_.data() + lookup.likely_id);
  }
  Id FindOrAdd(const Lookup& lookup);
  void Grow();

  HashSecret secret_;
  NameTable heads_;
  std::pmr::vector<Entry> entries_;
  std::pmr::vector<Slot> slots_;
  unsigned slot_bits_;
};

}  // namespace ptick
