#pragma once

#include <optional>

namespace ptick {

/// Waits for one byte from standard input. When that is a terminal, the key counts without Return,
/// is not echoed, and the interrupt keys keep their effect; the terminal is as it was found when
/// this returns, when a signal ends the process and while a signal keeps it stopped. Nothing when
/// the input has ended or the terminal is gone.
std::optional<char> WaitForKey();

}  // namespace ptick
