#pragma once

#include <cstdint>
#include <string_view>

#include "profile/parse/other_lines.h"
#include "profile/ticks/tick_table.h"

namespace ptick {

/// Takes the trace lines of a block into `ticks` and adds all the others to `others`: what several
/// threads can do at once, each with tables of its own. `before` is how many lines come before the
/// block. Returns the number of its lines. The block is as LineBlocks hands it out.
std::int64_t TakeTraceLines(std::string_view block, std::int64_t before, TickTable& ticks,
                            OtherLines& others);

}  // namespace ptick
