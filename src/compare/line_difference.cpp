#include "compare/line_difference.h"

#include <algorithm>
#include <dtl/dtl.hpp>

namespace ptick::compare {

// The library compares in time lines * differences, and records each step that it takes. Past two
// million steps it would begin anew and lose count of the lines; the bound on the lengths keeps it
// below that.
LineDifference CompareLines(std::span<const std::uint32_t> old_lines,
                            std::span<const std::uint32_t> new_lines, std::size_t limit) {
  using Lines = std::vector<std::uint32_t>;
  dtl::Diff<std::uint32_t, Lines> diff(Lines(old_lines.begin(), old_lines.end()),
                                       Lines(new_lines.begin(), new_lines.end()));
  diff.compose();
  LineDifference difference;
  const auto edits = static_cast<std::size_t>(diff.getEditDistance());
  difference.steps = std::max(old_lines.size(), new_lines.size()) + edits * edits / 4;
  for (const auto& [line, edit] : diff.getSes().getSequence()) {
    if (difference.old_end >= limit || difference.new_end >= limit) {
      break;
    }
    if (edit.type == dtl::SES_COMMON) {
      difference.common.push_back({difference.old_end, difference.new_end});
    }
    difference.old_end += edit.type == dtl::SES_ADD ? 0 : 1;
    difference.new_end += edit.type == dtl::SES_DELETE ? 0 : 1;
  }
  return difference;
}

}  // namespace ptick::compare
