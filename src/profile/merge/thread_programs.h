#pragma once

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <string_view>

#include "profile/ticks/name_table.h"

namespace ptick {

/// The programs that one of several threads has met in trace lines, numbered. So it tells others of
/// a line without its text. Most profiles have few programs; of many, only the first ones have
/// numbers.
class alignas(64) ThreadPrograms {
 public:
  /// The number of a program that there is no room for.
  static constexpr NameTable::Id kNone = ~NameTable::Id{0};

  /// There is room for `max` programs.
  explicit ThreadPrograms(std::size_t max) : max_(max) {}

  /// Returns the hash of a name and brings near what looking it up will touch. Called by one thread
  /// alone.
  std::uint32_t Prefetch(std::string_view program) const {
    const std::uint32_t hash = programs_.Hash(program);
    programs_.PrefetchSlot(hash);
    return hash;
  }

  /// The number of a program. Called by one thread alone.
  NameTable::Id NumberOf(std::string_view program, std::uint32_t hash) {
    if (const auto known = programs_.Find(program, hash)) {
      return *known;
    }
    return programs_.size() < max_ ? Add(program, hash) : kNone;
  }

  /// How many programs have numbers. Called by the same thread.
  std::size_t size() const { return programs_.size(); }

  /// The number that `heads` gives to the head of this program's trace lines. Called by any thread.
  NameTable::Id InternHeadIn(NameTable& heads, NameTable::Id program) const;

 private:
  NameTable::Id Add(std::string_view program, std::uint32_t hash);

  std::size_t max_;
  mutable std::mutex mutex_;  ///< held to add, and to read from another thread
  NameTable programs_;
};

}  // namespace ptick
