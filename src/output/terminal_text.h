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

/// How many rows a harmless text takes on a terminal of `columns`, at least 1, each at least one
/// column wide. A line end at the end of the text begins no row.
std::int64_t CountRows(std::string_view text, std::int64_t columns);

}  // namespace ptick
