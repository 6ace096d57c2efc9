#include "compare/unique_lines.h"

#include <algorithm>
#include <cstddef>

namespace ptick::compare {

namespace {

/// A line and where it is.
struct PlacedLine {
  std::uint32_t line;
  std::uint32_t place;
};

// The lines that a text has once, by their numbers.
std::vector<PlacedLine> UniqueLines(std::span<const std::uint32_t> lines) {
  std::vector<PlacedLine> sorted(lines.size());
  for (std::uint32_t place = 0; place < lines.size(); ++place) {
    sorted[place] = {lines[place], place};
  }
  std::ranges::sort(sorted, {}, &PlacedLine::line);
  std::vector<PlacedLine> unique;
  for (std::size_t n = 0; n < sorted.size(); ++n) {
    const bool has_twin = (n > 0 && sorted[n - 1].line == sorted[n].line) ||
                          (n + 1 < sorted.size() && sorted[n + 1].line == sorted[n].line);
    if (!has_twin) {
      unique.push_back(sorted[n]);
    }
  }
  return unique;
}

// The lines that are unique in both, in the order of the old text.
std::vector<LinePair> UniqueInBoth(std::span<const std::uint32_t> old_lines,
                                   std::span<const std::uint32_t> new_lines) {
  const std::vector<PlacedLine> in_old = UniqueLines(old_lines);
  const std::vector<PlacedLine> in_new = UniqueLines(new_lines);
  std::vector<LinePair> pairs;
  auto twin = in_new.begin();
  for (const PlacedLine& line : in_old) {
    while (twin != in_new.end() && twin->line < line.line) {
      ++twin;
    }
    if (twin != in_new.end() && twin->line == line.line) {
      pairs.push_back({line.place, twin->place});
    }
  }
  std::ranges::sort(pairs, {}, &LinePair::old_line);
  return pairs;
}

}  // namespace

// The longest increasing subsequence: of all chains of one length the one that ends first is kept.
std::vector<LinePair> CommonUniqueLines(std::span<const std::uint32_t> old_lines,
                                        std::span<const std::uint32_t> new_lines) {
  constexpr std::size_t kNone = ~std::size_t{0};
  const std::vector<LinePair> pairs = UniqueInBoth(old_lines, new_lines);
  std::vector<std::size_t> ends;  // by length of the chain
  std::vector<std::size_t> before(pairs.size(), kNone);
  for (std::size_t n = 0; n < pairs.size(); ++n) {
    const auto longer = std::ranges::lower_bound(
        ends, pairs[n].new_line, {}, [&](std::size_t end) { return pairs[end].new_line; });
    if (longer != ends.begin()) {
      before[n] = *(longer - 1);
    }
    if (longer == ends.end()) {
      ends.push_back(n);
    } else {
      *longer = n;
    }
  }
  std::vector<LinePair> chain;
  for (std::size_t n = ends.empty() ? kNone : ends.back(); n != kNone; n = before[n]) {
    chain.push_back(pairs[n]);
  }
  std::ranges::reverse(chain);
  return chain;
}

}  // namespace ptick::compare
