#include "companion/linux/standard_streams.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <initializer_list>

namespace ptick::companion {

void PrepareStandardStreams() {
  for (int fd = STDIN_FILENO; fd <= STDERR_FILENO; ++fd) {
    // The lowest free number is the one that is missing. It is kept for programs started from here.
    if (::fcntl(fd, F_GETFD) < 0 && ::open("/", O_PATH) < 0) {
      return;
    }
  }
  for (const int signal : {SIGPIPE, SIGXFSZ}) {
    ::signal(signal, SIG_IGN);
  }
}

}  // namespace ptick::companion
