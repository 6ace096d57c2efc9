// Which lines of two versions of a text are the same.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace ptick::compare {

/// Lines are counted from 0 here.
struct Alignment {
  static constexpr std::uint32_t kNone = ~std::uint32_t{0};

  /// For each line of the old text the line of the new one that it became unchanged, or kNone.
  std::vector<std::uint32_t> new_of_old;
  /// The other way round.
  std::vector<std::uint32_t> old_of_new;
};

/// Aligns two texts by a difference of their lines: lines that are aligned are equal byte for byte,
/// and their order is the same in both texts. Of texts up to about a thousand lines each as many
/// lines as can be are aligned; longer ones are divided first, at lines that both texts have once,
/// so that the time is bound by about the number of lines. A text has less than 2^31 lines.
Alignment AlignLines(std::span<const std::string_view> old_lines,
                     std::span<const std::string_view> new_lines);

}  // namespace ptick::compare
