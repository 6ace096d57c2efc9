#pragma once

namespace ptick {

/// How many cells of a terminal a character takes: 0 when it combines with the one before, 2 when
/// it is double-width, else 1.
int CharacterWidth(char32_t code);

}  // namespace ptick
