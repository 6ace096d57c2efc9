#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "support/terminal_session.h"

namespace ptick::testing {

inline constexpr std::string_view kPrompt = "-- more --";

/// What a terminal gets when that prompt goes, and when it comes and goes.
inline const std::string kCleared = "\r\x1b[K";
inline const std::string kAsked = kCleared + std::string(kPrompt) + kCleared;

/// What a program under test does: asks for one of a few keys with that prompt and ends with it as
/// its status.
int EndWithKey();
inline constexpr int kNoKey = 77;

/// Runs `scene` on a terminal of its own; true when its expectations hold.
bool PlayOnTerminal(const std::function<void(TerminalSession&)>& scene);

}  // namespace ptick::testing
