#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace ptick {

/// The streams of a child process, descriptors of this process above the standard ones.
struct ChildStreams {
  int input = -1;   ///< its standard input
  int output = -1;  ///< its standard output and standard error; -1: those of this process
};

/// A child process, or the error number that says why there is none.
struct Launched {
  pid_t child = 0;
  int error = 0;
};

/// Starts `program` with `arguments` (the first is the name it is told) as the leader of a process
/// group of its own. A program without '/' is looked for on PATH. It has the usual signal
/// dispositions, but no terminal stops it, and no descriptors of this process but its streams.
///
/// The system kills the child when the thread that started it ends, and the whole group when the
/// last writing end of the pipe is closed whose reading end is `lifeline`.
///
/// The error is EINVAL when a text holds a zero byte, else the system's: ENOENT or EACCES when
/// there is no such program.
///
/// Threads: one at a time.
Launched Launch(const std::string& program, const std::vector<std::string>& arguments,
                const ChildStreams& streams, int lifeline);

}  // namespace ptick
