// Works on words of 8 bytes, read as little-endian numbers so that the first byte is the lowest: a
// name is hashed word by word while its end is looked for, and a number's digits are valued all at
// once. No byte of the line is looked at twice, and nothing branches on the length of a number.

#include "profile/trace_scanner.h"

#include <bit>
#include <cstdint>
#include <cstring>

namespace ptick {

namespace {

static_assert(std::endian::native == std::endian::little, "words are read as little-endian");

constexpr std::uint64_t kOnes = 0x0101010101010101U;
constexpr std::uint64_t kHighs = 0x8080808080808080U;

std::uint64_t LoadWord(const char* at) {
  std::uint64_t word = 0;
  std::memcpy(&word, at, sizeof word);
  return word;
}

// The high bit of every byte below 11: TAB, LF and other controls. Exact up to the first such byte.
std::uint64_t BytesBelow11(std::uint64_t word) { return (word - kOnes * 11) & ~word & kHighs; }

// The high bit of every byte that is no decimal digit.
std::uint64_t NonDigits(std::uint64_t word) {
  const std::uint64_t low = word ^ (kOnes * '0');
  return (((low & ~kHighs) + kOnes * (0x7F - 9)) | low) & kHighs;
}

/// An ordinary number in front of a byte that is no digit.
struct Digits {
  std::uint32_t Number;
  std::uint32_t Count;  ///< of digits: 1 to 7
};

// The digits are moved to the top of the word, so that zeros stand in front, then valued pairwise.
inline bool ScanDigits(const char* at, Digits& digits) {
  const std::uint64_t word = LoadWord(at);
  const std::uint64_t others = NonDigits(word);
  const auto count = static_cast<std::uint32_t>(std::countr_zero(others)) / 8;
  if (count == 0 || others == 0 || (count > 1 && (word & 0xFFU) == '0')) {
    return false;
  }
  std::uint64_t value = (word ^ (kOnes * '0')) << (64 - 8 * count);
  value = (value * 10 + (value >> 8U)) & 0x00FF00FF00FF00FFU;
  value = (value * 100 + (value >> 16U)) & 0x0000FFFF0000FFFFU;
  value = (value * 10000 + (value >> 32U)) & 0xFFFFFFFFU;
  digits = {static_cast<std::uint32_t>(value), count};
  return true;
}

}  // namespace

const char* TraceScanner::Take(const char* line) {
  constexpr std::string_view kStart = "PROFILE:trace\t";
  if (LoadWord(line) != LoadWord(kStart.data()) ||
      LoadWord(line + 6) != LoadWord(kStart.data() + 6)) {
    return nullptr;
  }
  const char* name = line + kStart.size();
  const char* at = name;
  std::uint64_t hash = kHashSeed;
  std::uint64_t word = LoadWord(at);
  std::uint64_t end = BytesBelow11(word);
  for (; end == 0; at += 8, word = LoadWord(at), end = BytesBelow11(word)) {
    hash = MixHash(hash, word);
  }
  const auto left = static_cast<std::size_t>(std::countr_zero(end)) / 8;
  const std::uint64_t last = word & ~(~std::uint64_t{0} << (8 * left));
  at += left;
  const auto size = static_cast<std::size_t>(at - name);
  Digits number{};
  Digits ticks{};
  if (*at != '\t' || size == 0 || !ScanDigits(at + 1, number)) {
    return nullptr;
  }
  at += 1 + number.Count;
  if (*at != '\t' || !ScanDigits(at + 1, ticks)) {
    return nullptr;
  }
  at += 1 + ticks.Count;
  if (*at != '\n') {
    return nullptr;
  }
  hash = MixHash(hash, last ^ size << 56U);
  table_.Add(table_.Programs().Intern({name, size}, hash), number.Number, ticks.Number);
  return at + 1;
}

}  // namespace ptick
