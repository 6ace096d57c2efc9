// Shows a file to the user.
#pragma once

#include <string>

#include "companion/messages.h"

namespace ptick::companion {

/// Hands a file to the desktop's opener, xdg-open, and does not wait for it. False where it cannot
/// be started, which is told.
bool OpenForUser(const std::string& file, Messages& messages);

}  // namespace ptick::companion
