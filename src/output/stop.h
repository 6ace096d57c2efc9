#pragma once

namespace ptick {

/// How a run may end. A failed switch of the monitor ends with its error number instead.
enum ExitStatus : int {
  kSuccess = 0,
  kFailure = 1,   ///< something could not be opened, read, written or run; an invalid option
  kBadInput = 2,  ///< a malformed profile, one that lacks what the report needs, a bad -j call
};

/// Thrown to end the run early; the driver catches it in one place. What there was to say has been
/// printed by then.
struct Stop {
  int status = kSuccess;  ///< exit status of the process
};

}  // namespace ptick
