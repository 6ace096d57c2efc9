#pragma once

namespace ptick {

/// Thrown to end the run early; the driver catches it in one place. What there was to say has been
/// printed by then.
struct Stop {
  int status = 0;  ///< exit status of the process
};

}  // namespace ptick
