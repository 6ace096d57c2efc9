#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "profile/scan/load_word.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace ptick {

/// Tells where bytes of some value are among the next `size` bytes of a text, at most 64: a bit for
/// each byte, the first one's the lowest. This one asks nothing of the processor; ByteMasks is the
/// one to use.
template <std::size_t size>
class PortableByteMasks {
 public:
  explicit PortableByteMasks(const char* text) {
    for (std::size_t i = 0; i < words_.size(); ++i) {
      words_[i] = LoadWord(text + 8 * i);
    }
  }

  /// Where the bytes are `byte`.
  std::uint64_t Equal(char byte) const {
    return Gather([same = kOnes * static_cast<unsigned char>(byte)](std::uint64_t word) {
      const std::uint64_t other = word ^ same;
      return ~(((other & ~kHighs) + ~kHighs) | other);
    });
  }

  /// Whether any byte is `byte`.
  bool Holds(char byte) const { return Equal(byte) != 0; }

  /// Where the bytes are digits.
  std::uint64_t Digits() const {
    return Gather([](std::uint64_t word) {
      const std::uint64_t digits = word ^ (kOnes * '0');
      return ~(((digits & ~kHighs) + kOnes * (0x7F - 9)) | digits);
    });
  }

  /// Where the bytes are at most `byte`, which is below 128.
  std::uint64_t AtMost(unsigned char byte) const {
    return Gather([room = kOnes * (0x7FU - byte)](std::uint64_t word) {
      return ~(((word & ~kHighs) + room) | word);
    });
  }

 private:
  static_assert(size % 8 == 0 && size <= 64);
  static constexpr std::uint64_t kOnes = 0x0101010101010101U;
  static constexpr std::uint64_t kHighs = 0x8080808080808080U;

  // `marked` gives the bytes of a word that are meant, by their highest bits.
  template <typename Marked>
  std::uint64_t Gather(const Marked& marked) const {
    std::uint64_t bits = 0;
    for (unsigned i = 0; i < words_.size(); ++i) {
      const std::uint64_t marks = (marked(words_[i]) & kHighs) >> 7U;
      bits |= (marks * 0x0102040810204080U >> 56U) << (8U * i);
    }
    return bits;
  }

  std::array<std::uint64_t, size / 8> words_;
};

#if defined(__SSE2__)

template <std::size_t size>
class ByteMasks {
 public:
  explicit ByteMasks(const char* text) {
    for (std::size_t i = 0; i < kVectors; ++i) {
      // NOLINTNEXTLINE(*-reinterpret-cast): how vectors are loaded
      vectors_[i] = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + 16 * i));
    }
  }

  std::uint64_t Equal(char byte) const {
    return Gather(
        [same = _mm_set1_epi8(byte)](__m128i bytes) { return _mm_cmpeq_epi8(bytes, same); });
  }

  bool Holds(char byte) const {
    __m128i found = _mm_setzero_si128();
    for (const __m128i& bytes : vectors_) {
      found = _mm_or_si128(found, _mm_cmpeq_epi8(bytes, _mm_set1_epi8(byte)));
    }
    return _mm_movemask_epi8(found) != 0;
  }

  std::uint64_t Digits() const {
    return Gather([](__m128i bytes) {
      const __m128i digits = _mm_xor_si128(bytes, _mm_set1_epi8('0'));
      return _mm_cmpeq_epi8(_mm_min_epu8(digits, _mm_set1_epi8(9)), digits);
    });
  }

  std::uint64_t AtMost(unsigned char byte) const {
    return Gather([most = _mm_set1_epi8(static_cast<char>(byte))](__m128i bytes) {
      return _mm_cmpeq_epi8(_mm_min_epu8(bytes, most), bytes);
    });
  }

 private:
  static_assert(size % 16 == 0 && size <= 64);
  static constexpr std::size_t kVectors = size / 16;

  template <typename Marked>
  std::uint64_t Gather(const Marked& marked) const {
    std::uint64_t bits = 0;
    for (unsigned i = 0; i < kVectors; ++i) {
      const auto sixteen = static_cast<unsigned>(_mm_movemask_epi8(marked(vectors_[i])));
      bits |= std::uint64_t{sixteen} << (16U * i);
    }
    return bits;
  }

  __m128i vectors_[kVectors];  // NOLINT(*-avoid-c-arrays): std::array drops their alignment
};

#else

template <std::size_t size>
using ByteMasks = PortableByteMasks<size>;

#endif

}  // namespace ptick
