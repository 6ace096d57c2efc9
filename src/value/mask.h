#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "value/value.h"

namespace ptick {

/// A formatting mask, parsed once and used for many values. The masks:
///
///   "L#n"   left-justified in exactly n bytes, padded with blanks or cut
///   "R%n"   right-justified in exactly n bytes, padded with "0"; a longer text keeps its right end
///   "L2"    a number with 2 decimals, left-justified ("Ld": with d decimals)
///   "MR20"  a number with 2 decimals;  "MR22"  the number divided by 100, with 2 decimals
///           ("MRds": divided by 10 to the power s, with d decimals)
///   "ML,"   a whole number with commas between groups of three digits
///
/// Number masks have no width and add no padding. They round half away from zero on the decimal
/// value, on all digits as written ("1.005" by "L2" is 1.01); leading zeros and
/// a plus sign vanish, and nothing is shown as "-0". Empty and non-numeric text stays unchanged. A
/// width of zero or less gives the empty text.
class Mask {
 public:
  /// A mask of unknown form leaves every text unchanged.
  static Mask Parse(std::string_view mask);
  /// "L#" with a width.
  static Mask Left(std::int64_t width);

  /// `text` laid out by this mask.
  std::string Format(std::string_view text) const;
  /// Appends Format(text) to `out`.
  void Append(std::string_view text, std::string& out) const;

  /// The width of "L#" and "R%"; 0 for masks without one.
  std::int64_t Width() const { return width_; }

  /// Whether texts are laid out as numbers.
  bool TakesNumbers() const { return kind_ == Kind::kDecimals || kind_ == Kind::kGrouped; }

 private:
  enum class Kind { kPlain, kLeft, kZeroFilled, kDecimals, kGrouped };

  Kind kind_ = Kind::kPlain;
  std::int64_t width_ = 0;
  int decimals_ = 0;
  int scale_ = 0;  ///< decimal places the number is shifted down by
};

/// FMT: x laid out by a mask. Number masks take a floating x with its 15 significant digits, not
/// cut to 4 decimals as its text is.
std::string Fmt(const Value& x, std::string_view mask);

}  // namespace ptick
