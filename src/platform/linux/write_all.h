#pragma once

#include <string_view>

namespace ptick {

/// Writes all bytes to a descriptor, even to a non-blocking one. Returns 0 or the error number.
///
/// Threads: any; what several write at once may be mixed.
int WriteAll(int fd, std::string_view bytes);

}  // namespace ptick
