// Bytes of any kind as UTF-8. A name or text that is valid UTF-8 is that text; any other is taken
// byte for byte as Latin-1.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace ptick::companion {

/// Where the first byte beyond ASCII is, the size of the text when there is none.
std::size_t AsciiPrefix(std::string_view text);

/// Whether the text is UTF-8: shortest forms only, no surrogates, nothing above U+10FFFF.
bool IsUtf8(std::string_view text);

/// The text as UTF-8.
std::string ToUtf8(std::string_view text);
/// The same, added to `utf8`.
void AppendUtf8(std::string& utf8, std::string_view text);

/// Adds one character, which is no surrogate and at most U+10FFFF.
void AppendCharacter(std::string& utf8, char32_t code);

}  // namespace ptick::companion
