#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "value/dynamic_array.h"

namespace ptick {

/// A bit for each of the 64 bytes at `text`, the first the lowest, set where a line ends: at LF or
/// at a field mark.
inline std::uint64_t LineEndsPortable(const char* text) {
  std::uint64_t bits = 0;
  for (unsigned i = 0; i < 64; ++i) {
    const bool ends = text[i] == '\n' || text[i] == kFieldMark;
    bits |= std::uint64_t{ends} << i;
  }
  return bits;
}

#if defined(__SSE2__)

inline std::uint64_t LineEnds(const char* text) {
  const __m128i line_feed = _mm_set1_epi8('\n');
  const __m128i field_mark = _mm_set1_epi8(kFieldMark);
  std::uint64_t bits = 0;
  for (unsigned i = 0; i < 64; i += 16) {
    __m128i bytes;  // NOLINT(*-init-variables): loaded next
    std::memcpy(&bytes, text + i, sizeof bytes);
    const __m128i ends =
        _mm_or_si128(_mm_cmpeq_epi8(bytes, line_feed), _mm_cmpeq_epi8(bytes, field_mark));
    bits |= std::uint64_t{static_cast<unsigned>(_mm_movemask_epi8(ends))} << i;
  }
  return bits;
}

#else

inline std::uint64_t LineEnds(const char* text) { return LineEndsPortable(text); }

#endif

/// How many bytes after the end of a text SkipLines may read.
inline constexpr std::size_t kLineEndsPadding = 64;

/// The place after the `count`-th line end from `at` on, `count` being at least 1; what is left of
/// `count` is then 0. Where there are fewer before `end`, `end`, and how many are missing.
inline const char* SkipLines(const char* at, const char* end, std::uint64_t& count) {
  while (at < end) {
    const auto left = static_cast<std::size_t>(end - at);
    std::uint64_t ends = LineEnds(at);
    if (left < 64) {
      ends &= (std::uint64_t{1} << left) - 1;
    }
    const auto found = static_cast<unsigned>(std::popcount(ends));
    if (found >= count) {
      for (; count > 1; --count) {
        ends &= ends - 1;
      }
      count = 0;
      return at + std::countr_zero(ends) + 1;
    }
    count -= found;
    at += left < 64 ? left : 64;
  }
  return end;
}

}  // namespace ptick
