#include "generator/shuffle.h"

#include <bit>

#include "generator/random.h"

namespace ptick::bench {

Shuffle::Shuffle(std::uint64_t size, std::uint64_t seed)
    : size_(size),
      seed_(seed),
      half_bits_((static_cast<unsigned>(std::bit_width(size - 1)) + 2) / 2),
      half_mask_((std::uint64_t{1} << half_bits_) - 1) {}

std::uint64_t Shuffle::At(std::uint64_t index) const {
  do {
    index = Permute(index);
  } while (index >= size_);
  return index;
}

std::uint64_t Shuffle::Permute(std::uint64_t number) const {
  std::uint64_t left = number >> half_bits_;
  std::uint64_t right = number & half_mask_;
  for (std::uint64_t round = 1; round <= 3; ++round) {
    const std::uint64_t mixed = Random::Mix(right + (round << 32U) + (seed_ << 40U)) & half_mask_;
    const std::uint64_t next = left ^ mixed;
    left = right;
    right = next;
  }
  return left << half_bits_ | right;
}

}  // namespace ptick::bench
