// The exit status of a companion, the same for all of them.
#pragma once

namespace ptick::companion {

enum class ExitStatus {
  kDone = 0,
  /// Done, with something to tell: a gate is over its bar, an input was left out.
  kTold = 1,
  /// Wrong use, or trouble: there is no result.
  kTrouble = 2,
};

}  // namespace ptick::companion
