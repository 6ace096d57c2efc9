// How much of a profile a page takes in.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "value/value.h"

namespace ptick::view {

/// More than this makes pages that browsers open slowly, or not at all. What is more is left out,
/// and the page says so.
struct Limits {
  std::size_t lines = 1'000'000;                             ///< those with the most ticks get in
  std::size_t changed_lines = 1'000'000;                     ///< those with the largest changes
  std::size_t changed_rows = 100'000;                        ///< the same, of each other kind
  std::size_t commands = 100'000;                            ///< those with the most ticks
  std::size_t inputs = 100'000;                              ///< the first ones
  std::size_t calls = 100'000;                               ///< the most frequent ones
  std::size_t objects = 100'000;                             ///< the first ones by name
  std::size_t source_bytes = std::size_t{64} * 1024 * 1024;  ///< hungriest programs first
};

/// What did not get in.
struct LeftOut {
  std::string_view what;  ///< "lines", as web/src/data.ts names them
  std::uint64_t count = 0;
  std::uint64_t of = 0;
  std::optional<Number> ticks = std::nullopt;  ///< of those left out, where they have ticks
};

using LeftOutList = std::vector<LeftOut>;

}  // namespace ptick::view
