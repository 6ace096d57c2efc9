// The part of a source that is shown.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "companion/inputs/source_folders.h"
#include "ptick_annotate/line_ticks.h"

namespace ptick::companion {

/// Which lines are shown: those with ticks and `context` lines around each, or all.
struct ExcerptOptions {
  std::uint32_t context = 3;
  bool is_whole = false;
};

/// Lines of a source with their texts. Memory follows what is shown, not the source.
class SourceExcerpt {
 public:
  /// The excerpt of the first source of a program that can be read to its end; nothing when there
  /// is none in any folder.
  static std::optional<SourceExcerpt> Find(std::string_view program,
                                           std::span<const LineTicks> ticks,
                                           const SourceFolders& folders,
                                           const ExcerptOptions& options);

  /// Where the source is.
  const std::string& Path() const { return path_; }
  /// How many lines the source has.
  std::uint32_t SourceLines() const { return source_lines_; }

  /// The lines that are shown, ascending.
  std::span<const std::uint32_t> Lines() const { return lines_; }
  /// The text of the n-th of them, counted from 0, without its end.
  std::string_view TextOf(std::size_t n) const {
    return std::string_view(text_).substr(starts_[n], starts_[n + 1] - starts_[n]);
  }

 private:
  friend class ExcerptSink;

  std::string path_;
  std::uint32_t source_lines_ = 0;
  std::vector<std::uint32_t> lines_;
  std::string text_;
  std::vector<std::size_t> starts_;  ///< and the end of the last
};

}  // namespace ptick::companion
