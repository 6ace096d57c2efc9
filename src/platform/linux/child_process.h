#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

namespace ptick {

/// The standard streams of a child: descriptors of this process.
struct ChildStreams {
  int Input;
  int Output;
  int Error;
};

/// Whether a child leads a process group of its own, so that all it starts can be ended with it.
enum class ChildGroup { kInherited, kOwn };

/// Starts a program with its arguments, found on the path, with no other descriptors than its
/// streams and with signals as programs expect to find them. Nothing when it cannot be started.
std::optional<pid_t> StartChild(const std::vector<std::string>& words, ChildStreams streams,
                                ChildGroup group);

/// Waits for a child to end; its exit status, or 128 plus the number of the signal that ended it.
int WaitForChild(pid_t child);

}  // namespace ptick
