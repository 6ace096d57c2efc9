#pragma once

#include <cerrno>

namespace ptick {

/// Whether an error number says that the system has no descriptor or memory to give, which may
/// change: nothing is wrong with what was asked for.
///
/// Threads: any.
inline bool IsShortage(int error) {
  return error == EMFILE || error == ENFILE || error == ENOMEM || error == ENOBUFS;
}

}  // namespace ptick
