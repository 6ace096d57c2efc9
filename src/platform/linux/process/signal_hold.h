#pragma once

#include <csignal>
#include <optional>

#include "platform/linux/unique_fd.h"

namespace ptick {

/// While one of these lives, the signals that would end or stop this process, and the one that
/// tells of an ended child, are held back: the process learns of them from a descriptor that it can
/// poll together with others, does what must be done first, and then lets them take their effect.
///
/// Signals that are ignored, or were held back already, stay as they are. A signal that was not
/// taken when the hold ends takes its effect then. When the system has no descriptor left, nothing
/// is held back.
///
/// Threads: one, and only what it would take is held back: other threads take signals as before.
class SignalHold {
 public:
  SignalHold();
  SignalHold(const SignalHold&) = delete;
  SignalHold& operator=(const SignalHold&) = delete;
  ~SignalHold();

  /// Readable while a signal waits; -1 when nothing is held back.
  int Descriptor() const { return arrivals_.Get(); }

  /// The next signal that came, nothing when none waits.
  std::optional<int> Take();

  /// Whether a signal that is held back ends the process by its usual effect, so that commands that
  /// were started must be ended first.
  static bool EndsTheProcess(int signal);

  /// Lets a taken signal take its usual effect. Returns when that does not end the process: after a
  /// stop, when the process is continued; at once for a continue, which has done its work.
  static void Deliver(int signal);

 private:
  sigset_t mask_before_ = {};
  UniqueFd arrivals_;
};

}  // namespace ptick
