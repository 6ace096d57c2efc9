#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "profile/ticks/ordered_ticks.h"
#include "records/source_files.h"
#include "reports/fitted_texts.h"

namespace ptick {

/// The source text of every row of the per-line report, fitted to its column. Which lines are shown
/// is known from the entries before a source is opened: memory follows the lines shown, not the
/// sources read.
class SourceTexts {
 public:
  /// Reads all sources that the entries need. The entries must outlive this, the files need not.
  SourceTexts(const OrderedTicks& ticks, std::span<const SourceFile> files, std::int64_t width);

  /// The text of an entry's line; "??" when no file has it, or its line is not a number written in
  /// digits.
  std::string_view TextOf(const TickEntry& entry) const;

 private:
  void CollectLines();
  void SortLines();
  void ReadSources(std::span<const SourceFile> files);
  std::uint32_t LineOf(const TickEntry& entry) const;
  std::span<const std::uint32_t> LinesOf(NameTable::Id program) const {
    return std::span(lines_).subspan(starts_[program], starts_[program + 1] - starts_[program]);
  }

  const OrderedTicks& ticks_;
  std::vector<std::uint32_t> lines_;  ///< the distinct lines, program by program, ascending
  std::vector<std::size_t> starts_;   ///< by program: the place of its first line
  FittedTexts texts_;  ///< parallel to lines_, and one more: that of a line not found
};

}  // namespace ptick
