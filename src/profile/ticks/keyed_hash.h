#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "profile/scan/load_word.h"

namespace ptick {

/// What makes hashes differ from run to run. Who writes a profile does not know it, and so cannot
/// choose names that meet in one place of a table and make every lookup slow. No result depends on
/// it.
struct HashSecret {
  std::uint64_t first;
  std::uint64_t second;
};

/// A secret drawn at random.
HashSecret DrawSecret();

/// The secret of this process, drawn by the first call.
const HashSecret& ProcessSecret();

/// Two words mixed by one multiplication. The secret is in both factors: whoever does not have it
/// cannot make one of them 0, so that the other no longer counts.
inline std::uint64_t MixWords(std::uint64_t a, std::uint64_t b, const HashSecret& secret) {
  __extension__ using Wide = unsigned __int128;
  const Wide product = static_cast<Wide>(a ^ secret.first) * (b ^ secret.second);
  return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64U);
}

/// The hash of a name. A name of up to 16 bytes costs one multiplication.
inline std::uint32_t HashName(std::string_view name, const HashSecret& secret) {
  const char* at = name.data();
  std::size_t left = name.size();
  // Names of different sizes may give the same words: their sizes go in by way of the secret, too.
  std::uint64_t hash = std::rotl(secret.second, static_cast<int>(left % 64));
  for (; left > 16; at += 8, left -= 8) {
    hash = MixWords(hash, LoadWord(at), secret);
  }
  if (left >= 8) {
    hash = MixWords(hash ^ LoadWord(at), LoadWord(at + left - 8), secret);
  } else {
    std::uint64_t word = 0;
    for (std::size_t i = 0; i < left; ++i) {
      word = word << 8U | static_cast<unsigned char>(at[i]);
    }
    hash = MixWords(hash ^ word, 0, secret);
  }
  // Of names that are alike each half alone says too little, with some secrets.
  return static_cast<std::uint32_t>(hash ^ hash >> 32U);
}

/// The hash of a number. The first multiplication spreads numbers that follow each other.
inline std::uint64_t HashNumber(std::uint64_t number, const HashSecret& secret) {
  constexpr std::uint64_t kOdd = 0x9E3779B97F4A7C15U;
  return MixWords(number * kOdd, 0, secret);
}

}  // namespace ptick
