#pragma once

#include <bit>
#include <cstdint>

#include "profile/scan/byte_masks.h"

namespace ptick {

/// Where a line ends, and how its TABs are.
struct LineEnd {
  const char* at;        ///< the LF
  bool has_empty_field;  ///< a TAB is next to another, or the last byte of the line
};

/// The end of the line whose rest begins at `text`, after a TAB or at its start. The text ends with
/// LF, with kBlockPadding readable bytes after it.
inline LineEnd FindLineEnd(const char* text) {
  std::uint64_t tab_before = 1;
  std::uint64_t empty = 0;
  for (;; text += 64) {
    const ByteMasks<64> masks(text);
    const std::uint64_t line_ends = masks.Equal('\n');
    const std::uint64_t end = line_ends & (~line_ends + 1);
    const std::uint64_t tabs = masks.Equal('\t') & (end - 1);  // all of them where it does not end
    empty |= (tabs << 1U | tab_before) & (tabs | end);
    if (end != 0) {
      return {text + std::countr_zero(end), empty != 0};
    }
    tab_before = tabs >> 63U;
  }
}

}  // namespace ptick
