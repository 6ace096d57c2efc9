#pragma once

#include <cstdint>
#include <optional>

#include "platform/record_file.h"

namespace ptick {

/// How many lines the text of a record has, as LineFinder finds them: a line ends at LF or at a
/// field mark; the last one may lack its end, and after a field mark even an empty one counts.
/// std::nullopt when it cannot be read to its end.
std::optional<std::uint64_t> CountLines(RecordReader& record);

}  // namespace ptick
