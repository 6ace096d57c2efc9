#include "platform/linux/write_all.h"

#include <unistd.h>

#include <cerrno>

#include "platform/linux/wait_ready.h"

namespace ptick {

int WriteAll(int fd, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(fd, bytes.data(), bytes.size());
    if (written >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno == EAGAIN) {
      // Whoever shares this descriptor made it non-blocking.
      pollfd ready = {.fd = fd, .events = POLLOUT, .revents = 0};
      WaitReady({&ready, 1}, -1);
    } else if (errno != EINTR) {
      return errno;
    }
  }
  return 0;
}

}  // namespace ptick
