// Where the lines of programs went from one version of their sources to the next.
#pragma once

#include <cstdint>
#include <optional>
#include <unordered_map>

#include "compare/alignment.h"

namespace ptick::compare {

/// Lines as in a Key: numbers from 1 on, or texts. A line of a program without alignment is the
/// line of the same number; so is a line that is a text, line 0, and one that is past the end of
/// its source in both versions: it is no line of these sources.
class LineMoves {
 public:
  /// Sets how the sources of the program of this number are aligned.
  void Set(std::uint32_t program, Alignment alignment);

  bool Has(std::uint32_t program) const { return alignments_.contains(program); }

  /// The line in the new source that an old one became, or nothing where it is not there any more.
  std::optional<std::uint32_t> NewLine(std::uint32_t program, std::uint32_t old_line) const;
  /// The line in the old source that a new one was, or nothing where it was not there.
  std::optional<std::uint32_t> OldLine(std::uint32_t program, std::uint32_t new_line) const;

  /// Whether a line is past the end of its source: the profile is of another version.
  bool IsPastOldEnd(std::uint32_t program, std::uint32_t old_line) const;
  bool IsPastNewEnd(std::uint32_t program, std::uint32_t new_line) const;

 private:
  const Alignment* Find(std::uint32_t program) const;

  std::unordered_map<std::uint32_t, Alignment> alignments_;
};

}  // namespace ptick::compare
