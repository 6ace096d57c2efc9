#pragma once

#include <string_view>

namespace ptick {

/// Whether the whole of x matches the pattern: a sequence of digit counts followed by N (exactly
/// that many digits, "0N" any number of them) and literals in apostrophes. The empty pattern
/// matches the empty text; a malformed pattern matches nothing.
bool Matches(std::string_view x, std::string_view pattern);

}  // namespace ptick
