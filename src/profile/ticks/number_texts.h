#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "value/field_list.h"
#include "value/value.h"

namespace ptick {

/// Texts that are nearly always numbers, 4 bytes each. A number that is written the ordinary way
/// and is below 2^31 is held as itself; any other text ("007", "1.50", "abc") is kept aside exactly
/// as it was read.
class NumberTexts {
 public:
  /// A text's place here. Only the NumberTexts that gave it can tell what it is.
  using Id = std::uint32_t;

  /// That of the empty text, in every NumberTexts.
  static constexpr Id kEmpty = ~Id{0};

  Id Add(std::string_view text);

  /// Whether the place is that of a number which is written the ordinary way: then it is the
  /// number.
  static bool IsOrdinary(Id id) { return id < kAside; }

  /// The number that a text is that is not kept aside: 0 for the empty text. Nothing for any other.
  static std::optional<std::uint32_t> Whole(Id id) {
    if (IsOrdinary(id)) {
      return id;
    }
    return id == kEmpty ? std::optional<std::uint32_t>(0) : std::nullopt;
  }

  /// The text, as it was read.
  std::string Text(Id id) const;
  void AppendText(Id id, std::string& out) const;

  /// The text as a number: 0 when it is not numeric.
  Number AsNumber(Id id) const;

 private:
  static constexpr Id kAside = Id{1} << 31U;  ///< plus the place among the texts kept aside

  FieldList aside_;
};

}  // namespace ptick
