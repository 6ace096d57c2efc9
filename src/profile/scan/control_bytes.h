#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace ptick {

/// A bit for each of the 64 bytes at `text`, the first the lowest, set where the byte is below 11:
/// a TAB, a line end or another low control byte.
inline std::uint64_t ControlBytesPortable(const char* text) {
  constexpr std::uint64_t kOnes = 0x0101010101010101U;
  constexpr std::uint64_t kHighs = 0x8080808080808080U;
  std::uint64_t bits = 0;
  for (unsigned i = 0; i < 8; ++i) {
    std::uint64_t word = 0;
    std::memcpy(&word, text + std::size_t{8} * i, sizeof word);
    const std::uint64_t low = ~(((word & ~kHighs) + kOnes * (0x7F - 10)) | word) & kHighs;
    bits |= ((low >> 7U) * 0x0102040810204080U >> 56U) << (8U * i);
  }
  return bits;
}

#if defined(__SSE2__)

inline std::uint64_t ControlBytes(const char* text) {
  const __m128i ten = _mm_set1_epi8(10);
  const auto sixteen = [ten, text](unsigned i) {
    __m128i bytes;  // NOLINT(*-init-variables): loaded next
    std::memcpy(&bytes, text + std::size_t{16} * i, sizeof bytes);
    const __m128i low = _mm_cmpeq_epi8(_mm_min_epu8(bytes, ten), bytes);
    return static_cast<std::uint64_t>(static_cast<unsigned>(_mm_movemask_epi8(low))) << (16U * i);
  };
  return sixteen(0) | sixteen(1) | sixteen(2) | sixteen(3);
}

#else

inline std::uint64_t ControlBytes(const char* text) { return ControlBytesPortable(text); }

#endif

}  // namespace ptick
