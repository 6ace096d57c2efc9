#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "records/line_blocks.h"

namespace ptick {

/// Copies of the lines of a piece of a profile that are left for later, in order.
class OtherLines {
 public:
  void Clear() {
    text_.clear();
    runs_.clear();
  }

  /// Adds a line, with its end, that comes after `before` lines of the piece.
  void Add(std::string_view line, std::int64_t before) {
    if (runs_.empty() || runs_.back().before + runs_.back().count != before) {
      runs_.push_back({text_.size(), before, 0});
    }
    ++runs_.back().count;
    text_ += line;
  }

  /// Ends the piece.
  void End() { text_.append(kBlockPadding, '\0'); }

  /// Calls `visit(lines, before)` with blocks of lines that follow each other in the piece, and how
  /// many lines come before them, until it returns false. Returns whether it never did. Comes after
  /// End; the blocks are as LineBlocks hands them out.
  template <typename Visit>
  bool ForEach(const Visit& visit) const {
    for (std::size_t run = 0; run < runs_.size(); ++run) {
      const std::size_t begin = runs_[run].begin;
      const std::size_t end =
          run + 1 < runs_.size() ? runs_[run + 1].begin : text_.size() - kBlockPadding;
      if (!visit(std::string_view(text_).substr(begin, end - begin), runs_[run].before)) {
        return false;
      }
    }
    return true;
  }

 private:
  /// Lines that follow each other in the piece.
  struct Run {
    std::size_t begin;  ///< in the text
    std::int64_t before;
    std::int64_t count;
  };

  std::string text_;
  std::vector<Run> runs_;
};

}  // namespace ptick
