#pragma once

#include <cstdint>
#include <cstring>

namespace ptick {

/// The 8 bytes at `bytes` as a word.
inline std::uint64_t LoadWord(const char* bytes) {
  std::uint64_t word = 0;
  std::memcpy(&word, bytes, sizeof word);
  return word;
}

}  // namespace ptick
