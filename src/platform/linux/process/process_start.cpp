#include "platform/linux/process/process_start.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace ptick {

void PrepareProcess() {
  for (int fd = STDIN_FILENO; fd <= STDERR_FILENO; ++fd) {
    if (::fcntl(fd, F_GETFD) < 0 && errno == EBADF) {
      // The lowest free number is `fd`, as those below it are open by now.
      ::open("/dev/null", O_RDONLY);
    }
  }
  ::signal(SIGPIPE, SIG_IGN);
  ::signal(SIGXFSZ, SIG_IGN);
  ::signal(SIGCHLD, SIG_DFL);
  sigset_t child_ends = {};
  ::sigemptyset(&child_ends);
  ::sigaddset(&child_ends, SIGCHLD);
  ::sigprocmask(SIG_UNBLOCK, &child_ends, nullptr);
}

}  // namespace ptick
