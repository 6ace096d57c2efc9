// The shortest difference of two short texts, whose lines are numbers: equal lines, equal numbers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace ptick::compare {

/// Two equal lines, counted from 0 in their texts.
struct LinePair {
  std::size_t old_line;
  std::size_t new_line;
};

struct LineDifference {
  /// The longest common subsequence, in order.
  std::vector<LinePair> common;
  /// How far it was followed.
  std::size_t old_end = 0;
  std::size_t new_end = 0;
  /// About how many steps it took to find.
  std::size_t steps = 0;
};

/// Both texts have lines; the product of their lengths is at most 1,900,000. The difference is
/// followed until `limit` lines of one text are passed.
LineDifference CompareLines(std::span<const std::uint32_t> old_lines,
                            std::span<const std::uint32_t> new_lines, std::size_t limit);

}  // namespace ptick::compare
