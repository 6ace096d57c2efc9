#pragma once

#include <string>

#include "platform/linux/unique_fd.h"

namespace ptick::ports {

/// The runtime directory: where each process on a port has its socket file. It is trusted only
/// while it is a directory of the user that nobody else can write to, so it is checked on the open
/// descriptor and everything in it is reached through that descriptor: what is put in the place of
/// its name later has no effect.
///
/// Threads: any, while none changes the environment.

/// A descriptor, or the error number that says why there is none.
struct Opened {
  UniqueFd descriptor;
  int error = 0;
};

/// `MAVRO_RUNTIME_DIR`, else `mavro` in `XDG_RUNTIME_DIR`, else /tmp/mavro-UID; a variable that is
/// empty counts as not set.
std::string RuntimeDirectoryPath();

/// Opens the runtime directory (O_PATH). ENOENT when there is none; EACCES when what is there is no
/// directory (a symbolic link to one is none), belongs to somebody else or can be written to by
/// group or others, or when the way to it is closed; EMFILE, ENFILE or ENOMEM when the system has
/// no descriptor to give.
Opened OpenRuntimeDirectory();

/// The same, after making the directory, mode 0700, when it is missing. Parent directories are not
/// made.
Opened CreateRuntimeDirectory();

/// The path /proc/self/fd/N: it names exactly what is open and fits into any socket address.
std::string DescriptorPath(const UniqueFd& descriptor);

}  // namespace ptick::ports
