#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

#include "profile/scan/byte_masks.h"
#include "profile/scan/load_word.h"

namespace ptick {

inline constexpr std::uint32_t kNoOrdinaryNumber = ~std::uint32_t{0};

/// Eight bytes of text as digits: their values, or what else they are.
class EightDigits {
 public:
  /// Of the eight bytes before `end`, the last `size`, at least 1; zeros in place of the others.
  EightDigits(const char* end, std::size_t size)
      : digits_((LoadWord(end - 8) ^ (kOnes * '0')) & ~std::uint64_t{0} << (64 - 8 * size)) {
    static_assert(std::endian::native == std::endian::little, "words are read as little-endian");
  }

  bool AreDigits() const {
    const std::uint64_t above_nine = (digits_ & ~kHighs) + kOnes * (0x7F - 9);
    return ((above_nine | digits_) & kHighs) == 0;
  }

  /// The number that they spell: all digits valued together.
  std::uint32_t Number() const {
    std::uint64_t value = (digits_ * 10 + (digits_ >> 8U)) & 0x00FF00FF00FF00FFU;
    value = (value * 100 + (value >> 16U)) & 0x0000FFFF0000FFFFU;
    return static_cast<std::uint32_t>(value * 10000 + (value >> 32U));
  }

 private:
  static constexpr std::uint64_t kOnes = 0x0101010101010101U;
  static constexpr std::uint64_t kHighs = 0x8080808080808080U;

  std::uint64_t digits_;
};

/// The ordinary number of `size` digits, at most 8, before `end`; kNoOrdinaryNumber for any other
/// text. 8 bytes before the end are readable.
inline std::uint32_t NumberBefore(const char* end, std::size_t size) {
  constexpr std::size_t kMaxDigits = 8;
  if (size - 1 >= kMaxDigits) {  // none at all, too
    return kNoOrdinaryNumber;
  }
  const EightDigits digits(end, size);
  const bool leading_zero = size > 1 && end[-static_cast<std::ptrdiff_t>(size)] == '0';
  return digits.AreDigits() && !leading_zero ? digits.Number() : kNoOrdinaryNumber;
}

/// The size of the ordinary number at `text`, one below 2^31 that a TAB ends; 0 for any other text.
/// 8 bytes before the text and 16 from it on are readable.
inline std::size_t ReadNumber(const char* text, std::uint32_t& number) {
  constexpr std::uint64_t kBeyond = std::uint64_t{1} << 31U;
  constexpr std::size_t kMaxDigits = 10;
  const std::uint64_t others = ~ByteMasks<16>(text).Digits();
  const auto size = static_cast<std::size_t>(std::countr_zero(others));
  if (text[size] != '\t' || size - 1 >= kMaxDigits || (*text == '0' && size > 1)) {
    return 0;
  }
  if (size <= 8) {
    number = EightDigits(text + size, size).Number();
    return size;
  }
  const std::uint64_t first = EightDigits(text + size - 8, size - 8).Number();
  const std::uint64_t whole = first * 100'000'000 + EightDigits(text + size, 8).Number();
  number = static_cast<std::uint32_t>(whole);
  return whole < kBeyond ? size : 0;
}

}  // namespace ptick
