#pragma once

#include <cstdint>
#include <functional>
#include <optional>

namespace ptick::companion::testing {

/// Which calls of the system are to fail: those that have one of these bits in an argument.
struct CallArgument {
  unsigned number;
  std::uint32_t bits;
};

/// Lets every call of one kind (SYS_fsync, ...) fail with an error number from now on, in this
/// process and those that it becomes. Returns false where the system does not let it do so.
bool FailSystemCall(long call, int error, const std::optional<CallArgument>& only = std::nullopt);

}  // namespace ptick::companion::testing
