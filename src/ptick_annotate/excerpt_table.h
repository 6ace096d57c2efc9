// A source with ticks beside it.
#pragma once

#include <span>

#include "companion/text_writer.h"
#include "ptick_annotate/line_ticks.h"
#include "ptick_annotate/shares.h"
#include "ptick_annotate/source_excerpt.h"

namespace ptick::companion {

/// Prints ticks, share, number and text of each line of the excerpt; a row "..." says how many
/// lines of the source are not shown in its place.
void PrintExcerpt(const SourceExcerpt& excerpt, std::span<const LineTicks> ticks,
                  const Shares& shares, TextWriter& writer);

}  // namespace ptick::companion
