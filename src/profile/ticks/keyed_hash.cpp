#include "profile/ticks/keyed_hash.h"

#include <array>
#include <chrono>
#include <exception>
#include <random>

namespace ptick {

namespace {

// "getentropy" asks the system, in 2 µs; "default" first asks the processor what it can do, which
// takes 20 µs on a virtual machine. Which sources there are depends on the standard library.
constexpr std::array kRandomSources = {"getentropy", "default"};

HashSecret DrawFrom(const char* random_source) {
  std::random_device device(random_source);
  const auto word = [&device] { return std::uint64_t{device()} << 32U | device(); };
  return {.first = word(), .second = word()};
}

// The time to the nanosecond and a place in memory, which differs from run to run on most systems.
HashSecret Improvise() {
  const auto time = std::chrono::steady_clock::now().time_since_epoch().count();
  const HashSecret here{.first = static_cast<std::uint64_t>(time),
                        .second = std::bit_cast<std::uintptr_t>(&time)};
  return {.first = HashNumber(1, here), .second = HashNumber(2, here)};
}

}  // namespace

HashSecret DrawSecret() {
  for (const char* const random_source : kRandomSources) {
    try {
      return DrawFrom(random_source);
    } catch (const std::exception&) {  // NOLINT(bugprone-empty-catch): the next one is tried
    }
  }
  return Improvise();
}

const HashSecret& ProcessSecret() {
  static const HashSecret secret = DrawSecret();
  return secret;
}

}  // namespace ptick
