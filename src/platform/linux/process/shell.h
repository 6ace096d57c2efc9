#pragma once

#include <string>
#include <string_view>

namespace ptick {

/// Runs `line` with /bin/sh, `input` as its standard input, and waits until the shell has ended.
/// Standard output and standard error are this process's. Returns its exit status, 128 plus the
/// signal number when a signal ended it, 127 when it could not be started, 1 when the system failed
/// to hand its input over; in the last two cases a message on standard error says why. An input
/// that the line does not read to its end does no harm.
///
/// Nothing that the shell has started outlives it, and neither outlives the call, whatever ends it,
/// the end of this process included.
///
/// Where the platform's command `dcopy`, which copies its input to its output, is not installed, a
/// function of the shell takes its place.
///
/// Threads: one at a time; signals that another thread takes are not seen.
int RunShellLine(const std::string& line, std::string_view input);

}  // namespace ptick
