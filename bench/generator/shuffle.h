#pragma once

#include <cstdint>

namespace ptick::bench {

/// The numbers from 0 to size - 1 in a random order that needs no memory: a Feistel network over
/// the next even power of two, walked until it comes back into the range.
class Shuffle {
 public:
  /// `size` is at least 1.
  Shuffle(std::uint64_t size, std::uint64_t seed);

  /// The number at position `index`, below the size.
  std::uint64_t At(std::uint64_t index) const;

 private:
  std::uint64_t Permute(std::uint64_t number) const;

  std::uint64_t size_;
  std::uint64_t seed_;
  unsigned half_bits_;
  std::uint64_t half_mask_;
};

}  // namespace ptick::bench
