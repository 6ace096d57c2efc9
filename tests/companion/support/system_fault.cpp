#include "companion/support/system_fault.h"

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>

#include <cstddef>
#include <vector>

namespace ptick::companion::testing {

bool FailSystemCall(long call, int error, const std::optional<CallArgument>& only) {
  const auto load = [](std::size_t offset) {
    return sock_filter BPF_STMT(BPF_LD | BPF_W | BPF_ABS, static_cast<std::uint32_t>(offset));
  };
  std::vector<sock_filter> program = {
      load(offsetof(seccomp_data, nr)),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<std::uint32_t>(call), 1, 0),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
  };
  if (only) {
    program.push_back(load(offsetof(seccomp_data, args) + only->number * sizeof(std::uint64_t)));
    program.push_back(BPF_JUMP(BPF_JMP | BPF_JSET | BPF_K, only->bits, 1, 0));
    program.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
  }
  program.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | static_cast<unsigned>(error)));
  const sock_fprog filter = {.len = static_cast<unsigned short>(program.size()),
                             .filter = program.data()};
  return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
         ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

}  // namespace ptick::companion::testing
