#pragma once

#include <string>
#include <string_view>

namespace ptick {

/// Runs a command line with the shell as Platform::RunShell says. The command `dcopy`, which copies
/// its input to its output, is the platform's where that is on the path, and stood in for where it
/// is not.
int RunShellCommand(const std::string& command_line, std::string_view input);

}  // namespace ptick
