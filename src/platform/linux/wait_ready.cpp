#include "platform/linux/wait_ready.h"

#include <cerrno>
#include <ctime>

namespace ptick {

namespace {

constexpr timespec kMoment = {.tv_sec = 0, .tv_nsec = 10'000'000};

}  // namespace

bool WaitReady(std::span<pollfd> sources, int milliseconds) {
  for (pollfd& source : sources) {
    source.revents = 0;
  }
  if (::poll(sources.data(), sources.size(), milliseconds) >= 0 || errno == EINTR) {
    return true;
  }
  ::nanosleep(&kMoment, nullptr);
  return false;
}

}  // namespace ptick
