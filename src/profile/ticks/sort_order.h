#pragma once

namespace ptick {

/// In which order entries come by their tick counts.
enum class SortOrder {
  kAscending,   ///< smallest first
  kDescending,  ///< largest first
};

}  // namespace ptick
