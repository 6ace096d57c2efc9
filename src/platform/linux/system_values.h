#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/console.h"

namespace ptick {

/// What the environment, the terminal on standard output and the system tell about this process.

/// The width of the page: COLUMNS when it is a whole number from 1 to 32767, else the width of the
/// terminal on standard output, else 80.
std::int64_t ReadPageWidth();

/// The size of the terminal on standard output. Where that does not tell, it has 24 rows, and as
/// many columns as a page is wide.
TerminalSize ReadTerminalSize();

/// MAVRO_ACCOUNT when set and not empty, else the user name.
std::string ReadAccountName();

/// MAVRO_PORT as it is written when it is all digits, else "0".
std::string ReadOwnPort();

/// The name of user `uid` in the password file text at `path`, nothing when it has none there.
/// The file is read directly, as the lookup of the C library needs shared libraries at run time and
/// so does not work in a statically linked program.
std::optional<std::string> FindUserName(const std::string& path, std::uint32_t uid);

/// How many seconds local time is ahead of universal time at `time`; nothing when the year of that
/// moment cannot be told.
std::optional<std::int64_t> ReadZoneOffset(std::int64_t time);

}  // namespace ptick
