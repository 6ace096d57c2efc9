#include "platform/linux/processors.h"

#include <sched.h>

#include <cerrno>
#include <memory>

namespace ptick {

namespace {

struct FreeSet {
  void operator()(cpu_set_t* set) const { CPU_FREE(set); }
};

// The number of processors in the affinity; 0 when it has no room in a set for so many.
unsigned CountIn(int most) {
  const std::unique_ptr<cpu_set_t, FreeSet> set(CPU_ALLOC(static_cast<unsigned>(most)));
  const std::size_t size = CPU_ALLOC_SIZE(static_cast<unsigned>(most));
  if (set == nullptr) {
    return 1;
  }
  if (::sched_getaffinity(0, size, set.get()) != 0) {
    return errno == EINVAL ? 0 : 1;
  }
  return static_cast<unsigned>(CPU_COUNT_S(size, set.get()));
}

}  // namespace

// The system refuses a set that is too small for all its processors.
unsigned CountProcessors() {
  constexpr int kMax = 1 << 20;
  for (int most = CPU_SETSIZE; most <= kMax; most *= 2) {
    if (const unsigned count = CountIn(most); count > 0) {
      return count;
    }
  }
  return 1;
}

}  // namespace ptick
