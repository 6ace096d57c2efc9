// Where a companion tells its problems.
#pragma once

#include "companion/problem.h"

namespace ptick::companion {

class Messages {
 public:
  Messages() = default;
  Messages(const Messages&) = delete;
  Messages& operator=(const Messages&) = delete;
  virtual ~Messages() = default;

  /// Tells it at once, as a line of its own. May be called from several threads.
  virtual void Tell(const Problem& problem) = 0;
};

}  // namespace ptick::companion
