#include "profile/ticks/keyed_hash.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace ptick {

namespace {

constexpr HashSecret kKnown{.first = 0x2545F4914F6CDD1D, .second = 0x9E3779B97F4A7C15};
constexpr std::size_t kCount = 20000;

/// Secrets like those that are drawn, but the same in every run.
std::vector<HashSecret> OtherSecrets() {
  std::mt19937_64 random(1);
  std::vector<HashSecret> secrets;
  for (int n = 0; n < 8; ++n) {
    const std::uint64_t first = random();
    secrets.push_back({.first = first, .second = random()});
  }
  return secrets;
}

/// The most hashes with the same first 16 bits: hardly ever more than eight of 20,000 by chance.
std::size_t FullestBucket(const std::vector<std::uint32_t>& hashes) {
  constexpr unsigned kBits = 16;
  std::vector<std::size_t> buckets(std::size_t{1} << kBits);
  for (const std::uint32_t hash : hashes) {
    ++buckets[hash >> (32 - kBits)];
  }
  return *std::ranges::max_element(buckets);
}

constexpr std::size_t kMaxByChance = 12;

std::size_t FullestBucket(const std::vector<std::string>& names, const HashSecret& secret) {
  std::vector<std::uint32_t> hashes;
  for (const std::string& name : names) {
    hashes.push_back(HashName(name, secret));
  }
  return FullestBucket(hashes);
}

std::string WordText(std::uint64_t word) {
  std::string text(sizeof word, '\0');
  std::memcpy(text.data(), &word, sizeof word);
  return text;
}

std::string EightDigits(std::size_t n) {
  std::string digits = std::to_string(n);
  return std::string(8 - digits.size(), '0') + digits;
}

/// Names of 16 bytes that make a factor 0 for this secret.
std::vector<std::string> NamesAgainst(const HashSecret& secret) {
  const std::string first = WordText(secret.first ^ std::rotl(secret.second, 16));
  std::vector<std::string> names;
  for (std::size_t n = 0; n < kCount; ++n) {
    names.push_back(first + EightDigits(n));
  }
  return names;
}

TEST(NameHash, IsNoWeaponWithoutTheSecret) {
  const std::vector<std::string> names = NamesAgainst(kKnown);
  EXPECT_EQ(FullestBucket(names, kKnown), kCount) << "or the names are not what they should be";
  for (const HashSecret& secret : OtherSecrets()) {
    EXPECT_LE(FullestBucket(names, secret), kMaxByChance) << secret.first << " " << secret.second;
  }
}

// Names that begin with these bytes once all had the same hash.
TEST(NameHash, SpreadsNamesThatOnceMetInOnePlace) {
  std::vector<std::string> names;
  for (std::size_t n = 0; n < kCount; ++n) {
    names.push_back("\x1d\xdd\x6c\x4f\x91\xf4\x45\x35" + EightDigits(n));
  }
  for (const HashSecret& secret : OtherSecrets()) {
    EXPECT_LE(FullestBucket(names, secret), kMaxByChance) << secret.first << " " << secret.second;
  }
}

TEST(NameHash, SpreadsNamesThatAreAlike) {
  using Make = std::string (*)(std::size_t);
  const std::vector<Make> kinds = {
      [](std::size_t n) { return std::to_string(n); },
      [](std::size_t n) { return "P" + std::to_string(n); },
      [](std::size_t n) { return EightDigits(n); },
      [](std::size_t n) { return "ORDER.ENTRY." + std::to_string(n); },
      [](std::size_t n) { return EightDigits(n) + "ORDERXYZ"; },
      [](std::size_t n) { return std::to_string(n) + std::string(40, 'x'); },
      [](std::size_t n) { return std::string(40, 'x') + std::to_string(n) + std::string(40, 'x'); },
      [](std::size_t n) { return std::string(n, 'x'); },
      [](std::size_t n) { return std::string(n, '\0'); },
  };
  for (std::size_t kind = 0; kind < kinds.size(); ++kind) {
    std::vector<std::string> names;
    for (std::size_t n = 0; n < kCount / 4; ++n) {
      names.push_back(kinds[kind](n));
    }
    for (const HashSecret& secret : OtherSecrets()) {
      EXPECT_LE(FullestBucket(names, secret), kMaxByChance) << names[1] << ", kind " << kind;
    }
  }
}

// The words of a name of nine bytes and of one of ten may be the same.
TEST(NameHash, TellsSizesApart) {
  const std::string nine = "abcdefgh" + std::string(1, 'x');
  std::string ten = "abcdefgh" + std::string(2, 'x');
  std::memcpy(ten.data() + 2, nine.data() + 1, 8);
  ASSERT_EQ(LoadWord(nine.data() + 1), LoadWord(ten.data() + 2));
  ASSERT_EQ(LoadWord(nine.data()) & 0xFFFF, LoadWord(ten.data()) & 0xFFFF);
  EXPECT_NE(HashName(nine, kKnown), HashName(ten, kKnown));
  const std::string zeros(40, '\0');
  std::vector<std::uint32_t> hashes;
  for (std::size_t size = 0; size <= zeros.size(); ++size) {
    hashes.push_back(HashName(std::string_view(zeros).substr(0, size), kKnown));
  }
  std::ranges::sort(hashes);
  EXPECT_EQ(std::ranges::adjacent_find(hashes), hashes.end());
}

TEST(NameHash, FollowsTheBytesAndNotTheirPlaceInMemory) {
  for (std::size_t size = 0; size <= 40; ++size) {
    const std::string name(size, 'n');
    const std::string amid = "xyz" + name + "uvw";
    EXPECT_EQ(HashName(std::string_view(amid).substr(3, size), kKnown), HashName(name, kKnown))
        << size;
  }
}

std::size_t FullestBucket(const std::vector<std::uint64_t>& numbers, const HashSecret& secret) {
  std::vector<std::uint32_t> hashes;
  for (const std::uint64_t number : numbers) {
    hashes.push_back(static_cast<std::uint32_t>(HashNumber(number, secret) >> 32U));
  }
  return FullestBucket(hashes);
}

TEST(NumberHash, IsNoWeaponWithoutTheSecret) {
  std::vector<std::uint64_t> numbers;
  for (std::uint64_t number = 0; numbers.size() < 1000; ++number) {
    if (HashNumber(number, kKnown) >> 52U == 0) {
      numbers.push_back(number);
    }
  }
  EXPECT_GE(FullestBucket(numbers, kKnown), numbers.size() / 16);
  for (const HashSecret& secret : OtherSecrets()) {
    EXPECT_LE(FullestBucket(numbers, secret), kMaxByChance);
  }
}

TEST(NumberHash, SpreadsNumbersThatFollowEachOther) {
  for (const std::uint64_t step : {std::uint64_t{1}, std::uint64_t{10}, std::uint64_t{1} << 20U,
                                   std::uint64_t{1} << 32U, (std::uint64_t{1} << 32U) + 1}) {
    std::vector<std::uint64_t> numbers;
    for (std::uint64_t n = 0; n < kCount; ++n) {
      numbers.push_back(n * step);
    }
    for (const HashSecret& secret : OtherSecrets()) {
      EXPECT_LE(FullestBucket(numbers, secret), kMaxByChance) << step;
    }
  }
}

TEST(HashSecret, IsDrawnAtRandomOncePerProcess) {
  EXPECT_EQ(&ProcessSecret(), &ProcessSecret());
  const HashSecret one = DrawSecret();
  const HashSecret other = DrawSecret();
  EXPECT_NE(one.first, other.first);
  EXPECT_NE(one.second, other.second);
  EXPECT_NE(one.first, ProcessSecret().first);
}

}  // namespace

}  // namespace ptick
