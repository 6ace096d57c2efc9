#pragma once

#include <string>
#include <string_view>

namespace ptick {

/// Where a named record is found.
struct RecordPlace {
  std::string directory;
  std::string record;
};

/// Splits a file name at its last "/". Without one the directory is "."; of "/run1" it is "/".
RecordPlace SplitProfileName(std::string_view name);

}  // namespace ptick
