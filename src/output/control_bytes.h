#pragma once

#include <span>

namespace ptick {

/// Replaces what would drive a terminal by '?': the bytes below 32 but for the line end, and 127.
void ShowControlBytes(std::span<char> text);

}  // namespace ptick
