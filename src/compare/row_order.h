// In which order the rows of a comparison are shown.
#pragma once

#include <cstdint>
#include <vector>

#include "compare/comparison.h"

namespace ptick::compare {

enum class SortBy {
  kChange,    ///< the largest change first, up or down
  kRelative,  ///< the same in proportion to the old value; rows without one first
  kOld,       ///< the largest old value first
  kNew,
  kName,  ///< names byte by byte, lines as numbers
};

/// The rows by their places in Rows(). Those that are equal come by name, then by line or
/// subroutine: the new line, the old one where there is no new one.
std::vector<std::uint32_t> OrderRows(const Comparison& comparison, SortBy by);

}  // namespace ptick::compare
