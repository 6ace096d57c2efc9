#pragma once

namespace ptick {

/// Puts the process into the state that the rest of the platform layer relies on; called before
/// anything else is opened. Standard descriptors that were closed are filled, so that no file
/// opened later can be taken for one of them; writing to one that was closed still fails, with
/// EBADF. A write that nobody can take comes back as an error number instead of ending the process,
/// and ended children can be waited for, whatever was inherited.
///
/// Threads: called before there is a second one.
void PrepareProcess();

}  // namespace ptick
