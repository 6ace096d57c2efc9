#pragma once

#include <algorithm>
#include <cstdint>

namespace ptick::bench {

/// Pseudo-random numbers (splitmix64): the same from the same seed on every machine.
class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}

  std::uint64_t Next() { return Mix(state_ += 0x9E3779B97F4A7C15U); }

  /// 0 to limit - 1, all alike.
  std::uint32_t Below(std::uint32_t limit) {
    return static_cast<std::uint32_t>(((Next() >> 32U) * limit) >> 32U);
  }

  /// 1 to 99999, Zipf-like: x or more comes with a chance of 1 in x.
  std::uint32_t Zipf() {
    constexpr std::uint64_t kMax = 99999;
    const std::uint64_t divisor = (Next() >> 32U) + 1;
    return static_cast<std::uint32_t>(std::min((std::uint64_t{1} << 32U) / divisor, kMax));
  }

  /// Spreads the bits of a number evenly over the word.
  static std::uint64_t Mix(std::uint64_t word) {
    word = (word ^ (word >> 30U)) * 0xBF58476D1CE4E5B9U;
    word = (word ^ (word >> 27U)) * 0x94D049BB133111EBU;
    return word ^ (word >> 31U);
  }

 private:
  std::uint64_t state_;
};

}  // namespace ptick::bench
