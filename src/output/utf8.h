#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace ptick {

/// The first character of a text: its code, and how many bytes it takes. A byte that does not begin
/// a well-formed UTF-8 sequence is taken alone and has no code.
struct DecodedCharacter {
  std::optional<char32_t> code;
  std::size_t size = 0;
};

/// `text` is not empty.
DecodedCharacter DecodeCharacter(std::string_view text);

}  // namespace ptick
