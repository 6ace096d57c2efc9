#pragma once

#include <cstddef>
#include <vector>

#include "profile/ticks/ordered_ticks.h"

namespace ptick {

/// How programs are ordered.
enum class ProgramsBy {
  kName,   ///< ascending, byte by byte
  kTicks,  ///< by their total ticks in the order of the entries, equal totals in reverse order of
           ///< first appearance
};

/// The rows of entries that have a row per program, in the order in which the programs are shown.
std::vector<std::size_t> ProgramOrder(const OrderedTicks& ticks, ProgramsBy by);

}  // namespace ptick
