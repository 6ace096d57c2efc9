#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "profile/scan/load_word.h"

namespace ptick {

/// The hash that names are looked up by. A name of up to 16 bytes costs one multiplication.
inline std::uint64_t HashName(std::string_view name) {
  __extension__ using Wide = unsigned __int128;
  const auto mix = [](std::uint64_t a, std::uint64_t b) {
    const Wide product = static_cast<Wide>(a ^ 0x2545F4914F6CDD1DU) * (b ^ 0x9E3779B97F4A7C15U);
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64U);
  };
  const char* at = name.data();
  std::size_t left = name.size();
  std::uint64_t hash = left << 56U;
  for (; left > 16; at += 8, left -= 8) {
    hash = mix(hash, LoadWord(at));
  }
  if (left >= 8) {
    return mix(hash ^ LoadWord(at), LoadWord(at + left - 8));
  }
  std::uint64_t word = 0;
  for (std::size_t i = 0; i < left; ++i) {
    word = word << 8U | static_cast<unsigned char>(at[i]);
  }
  return mix(hash ^ word, 0);
}

/// Distinct texts, numbered from 0 in order of first appearance.
class NameTable {
 public:
  using Id = std::uint32_t;

  NameTable();

  /// The number of a name, given at its first appearance.
  Id Intern(std::string_view name) { return Intern(name, HashName(name)); }
  /// The same for a caller that has the HashName of `name` already.
  Id Intern(std::string_view name, std::uint64_t hash) {
    std::size_t slot = hash >> shift_;
    for (; slots_[slot].mark != 0; slot = (slot + 1) & (slots_.size() - 1)) {
      if (slots_[slot].check == static_cast<std::uint32_t>(hash) &&
          SameText(slots_[slot].mark - 1, name)) {
        return slots_[slot].mark - 1;
      }
    }
    return Add(name, hash, slot);
  }

  /// Hints for a caller that looks many names up: what a lookup will touch is brought near, one
  /// step after the other, while other names are dealt with.
  void PrefetchSlot(std::uint64_t hash) const { __builtin_prefetch(&slots_[hash >> shift_]); }
  void PrefetchEnd(Id id) const { __builtin_prefetch(ends_.data() + id); }
  void PrefetchText(Id id) const {
    if (id < size()) {
      __builtin_prefetch(bytes_.data() + ends_[id]);
      __builtin_prefetch(bytes_.data() + ends_[id + 1]);
    }
  }
  /// The number that a name of this hash most likely has; any when it is not there.
  Id LikelyId(std::uint64_t hash) const {
    std::size_t slot = hash >> shift_;
    for (; slots_[slot].mark != 0; slot = (slot + 1) & (slots_.size() - 1)) {
      if (slots_[slot].check == static_cast<std::uint32_t>(hash)) {
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
    std::uint32_t check = 0;  ///< the hash's low half, compared before the text
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
      return std::memcmp(a, b, size) == 0;
    }
    for (std::size_t at = 0; at + 8 < size; at += 8) {
      if (LoadWord(a + at) != LoadWord(b + at)) {
        return false;
      }
    }
    return LoadWord(a + size - 8) == LoadWord(b + size - 8);
  }

  Id Add(std::string_view name, std::uint64_t hash, std::size_t slot);
  void Grow();

  std::string bytes_;
  std::vector<std::size_t> ends_;
  std::vector<Slot> slots_;
  unsigned shift_;
};

}  // namespace ptick
