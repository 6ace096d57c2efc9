#pragma once

#include <cstddef>

namespace ptick {

/// More threads than these would wait for each other, and all take memory.
constexpr unsigned kMaxThreads = 32;

/// How many threads may work, and how much work is worth one of them. What comes out is the same
/// whatever it says: the sizes are only those that are fast.
struct ThreadPlan {
  unsigned threads = 1;  ///< at once, the caller's included

  /// Text of fewer bytes is read by one thread. Where it does not say how much it is, it is read so
  /// far before further threads are started.
  std::size_t bytes_alone = std::size_t{1} << 20U;
  std::size_t block_size = std::size_t{256} * 1024;  ///< of the text that is read at a time

  /// So much of a regular file a thread takes at a time.
  std::size_t smallest_range = std::size_t{256} * 1024;
  std::size_t largest_range = std::size_t{2} * 1024 * 1024;

  std::size_t merge_names = std::size_t{1} << 13U;  ///< that each thread of a merge knows by number

  /// A list of fewer rows is laid out by one thread.
  std::size_t rows_alone = std::size_t{1} << 15U;
  std::size_t batch_rows = std::size_t{1} << 13U;  ///< that a thread takes at a time
};

}  // namespace ptick
