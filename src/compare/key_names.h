// The names that keys of a comparison are made of, the same numbers on both sides.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "profile/ticks/name_table.h"

namespace ptick::compare {

/// What a row is of: a program and a line, a caller and a subroutine, or one name.
struct Key {
  /// Number of the program, command, caller or counter.
  std::uint32_t name = 0;
  /// A line, the number of a subroutine, or 0.
  std::uint32_t detail = 0;
};

/// A line of a program is its number when that is written the ordinary way and is below 2^31; any
/// other ("007", "abc") is a text of its own.
class KeyNames {
 public:
  /// Marks, in the detail of a key, a line that is a text.
  static constexpr std::uint32_t kLineText = std::uint32_t{1} << 31U;
  static constexpr bool IsLineNumber(std::uint32_t line) { return (line & kLineText) == 0; }

  NameTable& Names() { return names_; }
  const NameTable& Names() const { return names_; }
  /// Subroutines, and the texts of lines.
  NameTable& Details() { return details_; }
  const NameTable& Details() const { return details_; }

  /// The line of that text.
  std::uint32_t InternLine(std::string_view text);
  std::string LineText(std::uint32_t line) const;
  /// Whether the line is a number written the ordinary way, 2^31 and more included.
  bool IsOrdinaryLine(std::uint32_t line) const;
  /// Whether a line comes before another: as numbers, then as texts.
  bool LinePrecedes(std::uint32_t line, std::uint32_t other) const;

 private:
  NameTable names_;
  NameTable details_;
};

/// For each name of a table its place when they are sorted byte by byte.
std::vector<std::uint32_t> PlacesByBytes(const NameTable& names);

}  // namespace ptick::compare
