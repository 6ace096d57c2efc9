// The keys of one side of a comparison, numbered in the order in which they come.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "compare/key_names.h"
#include "profile/ticks/keyed_hash.h"

namespace ptick::compare {

class KeyTable {
 public:
  using Id = std::uint32_t;

  /// The number of a key, given where it is met first.
  Id Intern(Key key);
  /// The number of a key that is there.
  std::optional<Id> Find(Key key) const;

  /// Hints for a caller that looks many keys up: what a lookup will touch is brought near, one step
  /// after the other, while other keys are dealt with.
  void PrefetchSlot(Key key) const {
    if (!slots_.empty()) {
      __builtin_prefetch(&slots_[SlotOf(key)]);
    }
  }
  void PrefetchKey(Key key) const {
    if (const Id likely = LikelyId(key); likely < keys_.size()) {
      __builtin_prefetch(&keys_[likely]);
    }
  }
  /// The number that a key most likely has; any, or none, when it is not there.
  Id LikelyId(Key key) const { return slots_.empty() ? 0 : slots_[SlotOf(key)] - 1; }

  std::size_t size() const { return keys_.size(); }
  Key operator[](Id id) const { return keys_[id]; }

 private:
  std::size_t SlotOf(Key key) const {
    return HashNumber(Word(key), ProcessSecret()) & (slots_.size() - 1);
  }
  static std::uint64_t Word(Key key) { return std::bit_cast<std::uint64_t>(key); }
  std::size_t Locate(Key key) const;
  void Grow();

  std::vector<Key> keys_;
  /// Open addressing: numbers plus 1, 0 where a slot is free.
  std::vector<Id> slots_;
};

}  // namespace ptick::compare
