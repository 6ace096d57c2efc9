#include "figures/seconds_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "figures/clock_time.h"
#include "model/random_source.h"

namespace ptick {

namespace {

/// The text with what is written after it cut off; nothing may be written after that.
template <typename Put>
std::string Written(const Put& put) {
  std::array<char, SecondsText::kMaxSize + 1> room{};
  room.back() = '|';
  const auto size = static_cast<std::size_t>(put(room.data()) - room.data());
  return room.back() == '|' ? std::string(room.data(), size) : "beyond its room";
}

std::string Quick(std::int64_t ticks, std::int64_t hertz) {
  const SecondsText seconds{Value(hertz)};
  return Written([&](char* at) { return seconds.Put(ticks, at); });
}

std::string QuickParts(std::int64_t ticks, std::int64_t hertz, std::uint32_t parts) {
  const SecondsText seconds{Value(hertz)};
  return Written([&](char* at) { return seconds.Put(ticks, parts, at); });
}

TEST(SecondsText, WritesSecondsWithAtMostFourDecimals) {
  struct Row {
    std::int64_t ticks;
    std::int64_t hertz;
    std::string want;
  };
  const std::vector<Row> rows = {
      {0, 100, "0"},
      {1, 100, "0.01"},
      {10, 100, "0.1"},
      {100, 100, "1"},
      {250, 100, "2.5"},
      {-250, 100, "-2.5"},
      {12345, 1000, "12.345"},
      {123456, 10000, "12.3456"},
      {1, 10000, "0.0001"},
      {1, 10001, "0"},
      {-1, 10001, "0"},
      {1, 3, "0.3333"},
      {2, 3, "0.6666"},
      {-2, 3, "-0.6666"},
      {99999, 100000, "0.9999"},
      {4294967295, 1, "4294967295"},
      {-4294967296, 1, "-4294967296"},
      {4294967296, 7, "613566756.5714"},
      {4294967295, 2097152, "2047.9999"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Quick(row.ticks, row.hertz), row.want) << row.ticks << " by " << row.hertz;
  }
}

TEST(SecondsText, IsQuickForWholeClockRatesOnly) {
  struct Row {
    std::string hertz;
    bool want;
  };
  const std::vector<Row> rows = {
      {"100", true},      {"1", true},     {"2097152", true},
      {"0100", true},     {"100.0", true}, {"0", false},
      {"", false},        {"-100", false}, {"1.5", false},
      {"abc", false},     {"0.5", false},  {"1e2", false},
      {"2097153", false}, {" 100", false}, {"99999999999999999999", false},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(SecondsText(Value(row.hertz)).IsQuick(), row.want) << row.hertz;
  }
}

/// Ticks and clock rates for which the quotient is easy to get wrong: near multiples of a
/// ten-thousandth, at both ends, and any others.
struct Operands {
  std::int64_t ticks;
  std::int64_t hertz;
};

Operands RandomOperands(model::RandomSource& random) {
  constexpr std::int64_t kMaxHertz = 2097152;
  const auto below = [&random](std::int64_t bound) {
    return static_cast<std::int64_t>(random.Below(static_cast<std::size_t>(bound)));
  };
  Operands operands{};
  switch (random.Below(4)) {
    case 0:
      operands.hertz = std::int64_t{std::vector{1, 10, 50, 60, 64, 100, 128, 250, 1000, 1024, 10000,
                                                100000, 1000000}[random.Below(13)]};
      break;
    case 1:
      operands.hertz = kMaxHertz - below(100);
      break;
    default:
      operands.hertz = 1 + below(std::int64_t{1} << random.Between(1, 21));
  }
  if (random.Chance(50)) {
    operands.ticks = below(std::int64_t{1} << random.Between(1, 32));
  } else {
    // The nearest below, at or above so many ten-thousandths.
    const std::int64_t most = SecondsText::kMaxTicks * 10000 / operands.hertz;
    const std::int64_t scaled = below(most) + 1;
    operands.ticks = scaled * operands.hertz / 10000 + below(3) - 1;
  }
  operands.ticks = std::clamp<std::int64_t>(operands.ticks, 0, SecondsText::kMaxTicks);
  if (random.Chance(20)) {
    operands.ticks = -operands.ticks;
  }
  return operands;
}

TEST(SecondsText, AgreesWithTheValueLayer) {
  model::RandomSource random(1);
  for (int n = 0; n < 300'000; ++n) {
    const auto [ticks, hertz] = RandomOperands(random);
    ASSERT_EQ(Quick(ticks, hertz), Seconds(ticks, hertz).Text()) << ticks << " by " << hertz;
  }
}

TEST(SecondsText, AgreesWithTheValueLayerOnSmallFiguresOneByOne) {
  for (std::int64_t hertz = 1; hertz <= 130; ++hertz) {
    for (std::int64_t ticks = -5; ticks <= 500; ++ticks) {
      ASSERT_EQ(Quick(ticks, hertz), Seconds(ticks, hertz).Text()) << ticks << " by " << hertz;
    }
  }
}

TEST(SecondsText, AgreesWithTheValueLayerOnParts) {
  model::RandomSource random(2);
  for (int n = 0; n < 300'000; ++n) {
    const auto [ticks, hertz] = RandomOperands(random);
    const auto parts =
        static_cast<std::uint32_t>(1 + random.Below(std::size_t{1} << random.Between(1, 31)));
    ASSERT_EQ(QuickParts(ticks, hertz, parts),
              Divide(Seconds(ticks, hertz), std::int64_t{parts}).Text())
        << ticks << " by " << hertz << " by " << parts;
  }
  EXPECT_EQ(QuickParts(4294967296, 2097152, std::numeric_limits<std::uint32_t>::max()), "0");
}

}  // namespace

}  // namespace ptick
