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
