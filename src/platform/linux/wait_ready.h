#pragma once

#include <poll.h>

#include <span>

namespace ptick {

/// Waits as poll does: until one of `sources` is ready, `milliseconds` have passed (-1: for ever)
/// or a signal has come; `revents` says what is ready.
///
/// False when the system cannot wait, for want of memory say. Nothing is known of the sources then,
/// and a moment has passed, so that a caller that looks at everything and waits again does not
/// spin.
///
/// Threads: any.
bool WaitReady(std::span<pollfd> sources, int milliseconds);

}  // namespace ptick
