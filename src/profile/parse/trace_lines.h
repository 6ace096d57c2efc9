#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "profile/ticks/tick_table.h"

namespace ptick {

/// Lines of a block that follow each other.
struct LineRange {
  std::string_view lines;
  std::int64_t lines_before = 0;  ///< of the block
};

/// Takes the trace lines of a block into `ticks` and sets `others` to all the others, in order:
/// what several threads can do at once, each with tables of its own. Returns the number of lines.
/// The block is as LineBlocks hands it out.
std::int64_t TakeTraceLines(std::string_view block, TickTable& ticks,
                            std::vector<LineRange>& others);

}  // namespace ptick
