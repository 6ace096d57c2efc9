#pragma once

#include <optional>
#include <string_view>

namespace ptick {

/// Shows `prompt` on standard output, on the row of the cursor, and waits for one of `keys` from
/// standard input. When that is a terminal, a key counts without Return, none is echoed, and the
/// interrupt keys keep their effect. A key that sends a sequence beginning with ESC, as arrows do,
/// is none of `keys`, whatever is in the sequence.
///
/// The prompt is erased and the terminal is as it was found when this returns, when a signal ends
/// the process and while a signal keeps it stopped; then the cursor is where the prompt began.
/// Nothing when the input has ended or the terminal is gone.
std::optional<char> AskForKey(std::string_view prompt, std::string_view keys);

}  // namespace ptick
