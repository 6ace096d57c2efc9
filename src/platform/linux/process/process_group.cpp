#include "platform/linux/process/process_group.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>

namespace ptick {

namespace {

constexpr int kUnknownStatus = 127;

int ExitStatus(int wait_status) {
  return WIFSIGNALED(wait_status) ? 128 + WTERMSIG(wait_status) : WEXITSTATUS(wait_status);
}

// Whether the child has ended; it is not waited for yet. `flags` as waitid takes them.
bool HasEnded(pid_t child, int flags) {
  siginfo_t end = {};
  int result = 0;
  do {
    result = ::waitid(P_PID, static_cast<id_t>(child), &end, WEXITED | WNOWAIT | flags);
  } while (result != 0 && errno == EINTR);
  return result != 0 || end.si_pid == child;
}

}  // namespace

ProcessGroup& ProcessGroup::operator=(ProcessGroup&& other) noexcept {
  if (this != &other) {
    Kill();
    child_ = std::exchange(other.child_, 0);
    status_ = other.status_;
    lifeline_ = std::move(other.lifeline_);
  }
  return *this;
}

int ProcessGroup::Start(const std::string& program, const std::vector<std::string>& arguments,
                        const ChildStreams& streams) {
  std::array<int, 2> ends = {-1, -1};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
    return errno;
  }
  const UniqueFd held_by_group(ends[0]);
  lifeline_ = UniqueFd(ends[1]);
  const Launched launched = Launch(program, arguments, streams, held_by_group.Get());
  child_ = launched.child;
  return launched.error;
}

std::optional<int> ProcessGroup::Poll() {
  if (IsRunning() && HasEnded(child_, WNOHANG)) {
    End();
  }
  return IsRunning() ? std::nullopt : std::optional(status_);
}

int ProcessGroup::Wait() {
  if (IsRunning()) {
    HasEnded(child_, 0);
    End();
  }
  return status_;
}

void ProcessGroup::Kill() {
  if (IsRunning()) {
    End();
  }
}

// The group is killed before its leader is waited for: until then nothing else gets its number.
void ProcessGroup::End() {
  ::kill(-child_, SIGKILL);
  int wait_status = 0;
  pid_t ended = -1;
  do {
    ended = ::waitpid(child_, &wait_status, 0);
  } while (ended < 0 && errno == EINTR);
  status_ = ended == child_ ? ExitStatus(wait_status) : kUnknownStatus;
  child_ = 0;
  lifeline_.Close();
}

}  // namespace ptick
