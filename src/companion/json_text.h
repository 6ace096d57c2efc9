// Texts and numbers as JSON has them.
#pragma once

#include <string>
#include <string_view>

namespace ptick::companion {

/// Adds a text, bytes of any kind, as a JSON string in its quotes: as UTF-8, with escapes for
/// quotes, backslashes and all that would drive a terminal.
void AppendJsonText(std::string& json, std::string_view text);

/// Whether a text is a number in JSON.
bool IsJsonNumber(std::string_view text);

}  // namespace ptick::companion
