#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>
#include <vector>

#include "profile/scan/load_word.h"
#include "profile/ticks/keyed_hash.h"
#include "value/growing_text.h"

namespace ptick {

/// Distinct texts, numbered from 0 in order of first appearance.
class NameTable {
 public:
  using Id = std::uint32_t;

  explicit NameTable(const HashSecret& secret = ProcessSecret());

  /// The hash that a name is looked up by, for callers that do a lookup in steps.
  std::uint32_t Hash(std::string_view name) const { return HashName(name, secret_); }

  /// The number of a name, given at its first appearance.
  Id Intern(std::string_view name) { return Intern(name, Hash(name)); }
  /// The same for a caller that has the hash of `name` already.
  Id Intern(std::string_view name, std::uint32_t hash) {
    std::size_t slot = hash >> shift_;
    for (; slots_[slot].mark != 0; slot = (slot + 1) & (slots_.size() - 1)) {
      if (slots_[slot].hash == hash && SameText(slots_[slot].mark - 1, name)) {
        return slots_[slot].mark - 1;
      }
    }
    return Add(name, hash, slot);
  }

  /// The number of a name; nothing where it has none.
  std::optional<Id> Find(std::string_view name, std::uint32_t hash) const {
    for (std::size_t slot = hash >> shift_; slots_[slot].mark != 0;
         slot = (slot + 1) & (slots_.size() - 1)) {
      if (slots_[slot].hash == hash && SameText(slots_[slot].mark - 1, name)) {
        return slots_[slot].mark - 1;
      }
    }
    return std::nullopt;
  }

  /// Hints for a caller that looks many names up: what a lookup will touch is brought near, one
  /// step after the other, while other names are dealt with.
  void PrefetchSlot(std::uint32_t hash) const { __builtin_prefetch(&slots_[hash >> shift_]); }
  void PrefetchEnd(Id id) const { __builtin_prefetch(ends_.data() + id); }
  void PrefetchText(Id id) const {
    if (id < size()) {
      __builtin_prefetch(bytes_.data() + ends_[id]);
      __builtin_prefetch(bytes_.data() + ends_[id + 1]);
    }
  }
  /// The number that a name of this hash most likely has; any when it is not there.
  Id LikelyId(std::uint32_t hash) const {
    std::size_t slot = hash >> shift_;
    for (; slots_[slot].mark != 0; slot = (slot + 1) & (slots_.size() - 1)) {
      if (slots_[slot].hash == hash) {
        return slots_[slot].mark - 1;
      }
    }
    return 0;
  }

  /// Whether `id` is the number of `name`.
  bool Is(Id id, std::string_view name) const { return id < size() && SameText(id, name); }

  std::size_t size() const { return ends_.size() - 1; }

  /// The text of a name; valid until the next Intern.
  std::string_view operator[](Id id) const {
    return {bytes_.data() + ends_[id], ends_[id + 1] - ends_[id]};
  }

 private:
  /// A place in the open-addressing index; Mark is the number plus 1, or 0 where it is free.
  struct Slot {
    std::uint32_t mark = 0;
    std::uint32_t hash = 0;  ///< compared before the text; an index grows without the texts
  };

  // Compares words instead of calling for so short a comparison; the last word overlaps the one
  // before.
  bool SameText(Id id, std::string_view name) const {
    const std::size_t begin = ends_[id];
    const std::size_t size = ends_[id + 1] - begin;
    if (size != name.size()) {
      return false;
    }
    const char* a = bytes_.data() + begin;
    const char* b = name.data();
    if (size < 8) {
      return size == 0 || std::memcmp(a, b, size) == 0;  // an empty view may be null
    }
    for (std::size_t at = 0; at + 8 < size; at += 8) {
      if (LoadWord(a + at) != LoadWord(b + at)) {
        return false;
      }
    }
    return LoadWord(a + size - 8) == LoadWord(b + size - 8);
  }

  Id Add(std::string_view name, std::uint32_t hash, std::size_t slot);
  void Grow();

  HashSecret secret_;
  GrowingText bytes_;
  std::vector<std::size_t> ends_;
  std::vector<Slot> slots_;
  unsigned shift_;
};

}  // namespace ptick
