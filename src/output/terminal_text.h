#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace ptick {

/// Text as a terminal takes it: UTF-8, shown in rows of cells.

/// Makes a text harmless in place and returns its new size, which is never greater. Each character
/// that drives a terminal, or reorders or hides text, becomes one '?': control characters but for
/// TAB and line end, those that set the direction of text, and those without width. So does each
/// byte from 80 to 9F that is not part of a character: some terminals take it for a control
/// character. All else stays as it is.
std::size_t MakeHarmless(std::span<char> text);
void MakeHarmless(std::string& text);

/// How many rows a line of harmless text takes on a terminal of that many columns (at least 1). It
/// takes at least one; a line end inside it begins another.
std::int64_t CountRows(std::string_view line, std::int64_t columns);

}  // namespace ptick
