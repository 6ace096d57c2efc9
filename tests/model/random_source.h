#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "value/dynamic_array.h"
#include "value/list_operations.h"

namespace ptick::model {

/// Random choices that a seed determines, on every machine alike.
class RandomSource {
 public:
  explicit RandomSource(std::uint64_t seed) : state_(seed) {}

  /// A number from 0 to `bound` - 1.
  std::size_t Below(std::size_t bound) { return static_cast<std::size_t>(Next() % bound); }

  /// A number from `least` to `most`.
  std::size_t Between(std::size_t least, std::size_t most) {
    return least + Below(most - least + 1);
  }

  bool Chance(std::size_t percent) { return Below(100) < percent; }

  /// One of the elements of a list.
  template <typename List>
  std::string Pick(const List& list) {
    return std::string(list[Below(list.size())]);
  }

  /// One of the words of a text, which bars separate.
  std::string PickWord(std::string_view words) {
    const auto count = static_cast<std::size_t>(DCount(words, '|'));
    return Field(words, '|', static_cast<std::int64_t>(Between(1, count))).text;
  }

  std::string Digits(std::size_t count) {
    std::string digits(count, '0');
    for (char& digit : digits) {
      digit = static_cast<char>('0' + Below(10));
    }
    return digits;
  }

 private:
  // SplitMix64.
  std::uint64_t Next() {
    state_ += 0x9E3779B97F4A7C15U;
    std::uint64_t mixed = state_;
    mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9U;
    mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EBU;
    return mixed ^ (mixed >> 31U);
  }

  std::uint64_t state_;
};

}  // namespace ptick::model
