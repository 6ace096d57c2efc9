// A file that becomes another one when it is whole, or goes.
#pragma once

#include <sys/stat.h>

#include <string>
#include <string_view>

#include "companion/linux/signal_cleanup.h"
#include "platform/linux/unique_fd.h"

namespace ptick::companion {

/// A new file in a directory, under a name of its own that begins with a dot. It goes with this
/// object, and with a signal that ends the process, at any moment.
class TemporaryFile {
 public:
  /// `stem` is the readable part of the name. The mode is lessened by the umask. Throws a
  /// std::system_error.
  TemporaryFile(UniqueFd directory, std::string_view stem, mode_t mode);
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile();

  int Descriptor() const { return file_.Get(); }

  /// Gives it the owner, the group, both if the system lets, and the mode of another file. Returns
  /// 0, or the error number when the mode cannot be had.
  int TakeAfter(const struct stat& other) const;

  /// Has its bytes written to the disk (fsync), then puts it in the place of `name` in its
  /// directory: even after a power cut, what has that name is whole. Returns 0, or the error
  /// number; it is still temporary then.
  int BecomePermanent(const std::string& name);

 private:
  UniqueFd directory_;
  std::string name_;
  UniqueFd file_;
  DoomedFile doomed_;
};

}  // namespace ptick::companion
