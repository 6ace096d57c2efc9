#pragma once

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <string_view>

#include "profile/ticks/name_table.h"

namespace ptick {

/// The heads of keys that one of several threads has met, numbered. So it tells others of a line
/// without its text. Most profiles have few heads; of many, only the first ones have numbers.
class alignas(64) ThreadHeads {
 public:
  /// The number of a head that there is no room for.
  static constexpr NameTable::Id kNone = ~NameTable::Id{0};

  /// There is room for `max` heads.
  explicit ThreadHeads(std::size_t max) : max_(max) {}

  /// Returns the hash of a head and brings near what looking it up will touch. Called by one thread
  /// alone.
  std::uint32_t Prefetch(std::string_view head) const {
    const std::uint32_t hash = heads_.Hash(head);
    heads_.PrefetchSlot(hash);
    return hash;
  }

  /// The number of a head. Called by one thread alone.
  NameTable::Id NumberOf(std::string_view head, std::uint32_t hash) {
    if (const auto known = heads_.Find(head, hash)) {
      return *known;
    }
    return heads_.size() < max_ ? Add(head, hash) : kNone;
  }

  /// How many heads have numbers. Called by the same thread.
  std::size_t size() const { return heads_.size(); }

  /// The number that `heads` gives to the head of that number. Called by any thread.
  NameTable::Id InternIn(NameTable& heads, NameTable::Id number) const;

 private:
  NameTable::Id Add(std::string_view head, std::uint32_t hash);

  std::size_t max_;
  mutable std::mutex mutex_;  ///< held to add, and to read from another thread
  NameTable heads_;
};

}  // namespace ptick
