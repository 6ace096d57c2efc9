#pragma once

namespace ptick {

/// How many processors this process may use: those that its affinity names. 1 where the system does
/// not say.
unsigned CountProcessors();

}  // namespace ptick
