// Where the result goes that a user asks for by a name.
#pragma once

#include <sys/stat.h>

#include <optional>
#include <string>

#include "platform/linux/unique_fd.h"

namespace ptick::companion {

/// What a name means, links followed. Of the two, one is there.
struct ResultPlace {
  /// Something that is written as it is: a pipe, a device, a descriptor of this process.
  UniqueFd open;

  /// A file that is replaced, or made.
  struct Replaced {
    UniqueFd directory;
    /// Its name in there.
    std::string name;
    /// What is there already.
    std::optional<struct stat> old;
  };
  std::optional<Replaced> replaced;
};

/// Throws a std::system_error where there is nothing that can be written: a directory, a file that
/// is protected, a folder that is not there.
ResultPlace FindResultPlace(const std::string& file);

}  // namespace ptick::companion
