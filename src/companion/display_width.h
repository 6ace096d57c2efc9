// How many columns of a terminal UTF-8 text takes.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace ptick::companion {

/// Two columns for a wide character, none for a combining one, one for most. A control character
/// counts as one, and so does a byte that is no part of a UTF-8 character.
std::size_t DisplayWidth(std::string_view utf8);

/// The longest front part of the text that takes at most `columns` columns, whole characters with
/// the combining ones that follow them.
std::string_view FittingPart(std::string_view utf8, std::size_t columns);

/// The text when it takes at most `columns` columns; else its front part and "..." in that many.
std::string CutToWidth(std::string_view utf8, std::size_t columns);

}  // namespace ptick::companion
