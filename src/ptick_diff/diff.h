// What ptick-diff shows: a comparison, the order of its rows, and which of them are shown.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "compare/comparison.h"

namespace ptick::compare {

struct Diff {
  const Comparison& comparison;
  std::span<const std::string> old_profiles;
  std::span<const std::string> new_profiles;
  bool is_normalized = false;
  /// Whether lines were followed through edited sources.
  bool has_sources = false;
  /// Programs whose lines are compared by number, for one of their sources was not found.
  std::vector<std::string> programs_without_source;

  /// Places in Rows(), all of them, in their order.
  std::vector<std::uint32_t> order;

  const Row& RowAt(std::uint32_t place) const { return comparison.Rows()[place]; }
  Kind By() const { return comparison.OldSide().GetKind(); }
  /// Whether a side has several runs, so that means have deviations.
  bool HasDeviations() const {
    return comparison.OldSide().Runs() > 1 || comparison.NewSide().Runs() > 1;
  }
};

}  // namespace ptick::compare
