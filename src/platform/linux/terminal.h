#pragma once

#include <optional>
#include <string_view>

namespace ptick {

/// Writes all bytes to a descriptor, also to one that takes them in parts or not at once. Returns 0
/// or the error number.
int WriteAll(int fd, std::string_view bytes);

/// Waits for one byte from standard input. When that is a terminal, the key counts without Return,
/// is not echoed, and the interrupt keys keep their effect; the terminal is as it was found when
/// this returns, when a signal ends the process and while a signal keeps it stopped. Nothing when
/// the input has ended or the terminal is gone.
std::optional<char> WaitForKey();

}  // namespace ptick
