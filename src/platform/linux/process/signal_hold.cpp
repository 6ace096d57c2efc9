#include "platform/linux/process/signal_hold.h"

#include <pthread.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <algorithm>
#include <array>

namespace ptick {

namespace {

// What cannot be held, what stops a process that uses a terminal from the background, and what does
// nothing. All others end or stop a process, or tell it of a child.
constexpr std::array kOtherSignals = {SIGKILL, SIGSTOP, SIGTTIN, SIGTTOU, SIGWINCH, SIGURG};

// A blocked signal is queued even when it is ignored, so an ignored one must not be held back.
bool IsIgnored(int signal) {
  struct sigaction action = {};
  return ::sigaction(signal, nullptr, &action) != 0 || action.sa_handler == SIG_IGN;
}

bool IsOther(int signal) { return std::ranges::find(kOtherSignals, signal) != kOtherSignals.end(); }

}  // namespace

SignalHold::SignalHold() {
  ::pthread_sigmask(SIG_BLOCK, nullptr, &mask_before_);
  sigset_t held = {};
  ::sigemptyset(&held);
  for (int signal = 1; signal <= SIGRTMAX; ++signal) {
    if (::sigismember(&mask_before_, signal) == 0 && !IsIgnored(signal) && !IsOther(signal)) {
      ::sigaddset(&held, signal);
    }
  }
  ::pthread_sigmask(SIG_BLOCK, &held, nullptr);
  arrivals_ = UniqueFd(::signalfd(-1, &held, SFD_CLOEXEC | SFD_NONBLOCK));
  if (!arrivals_.IsOpen()) {
    ::pthread_sigmask(SIG_SETMASK, &mask_before_, nullptr);
  }
}

SignalHold::~SignalHold() { ::pthread_sigmask(SIG_SETMASK, &mask_before_, nullptr); }

std::optional<int> SignalHold::Take() {
  signalfd_siginfo arrival = {};
  if (!arrivals_.IsOpen() ||
      ::read(arrivals_.Get(), &arrival, sizeof(arrival)) != ssize_t{sizeof(arrival)}) {
    return std::nullopt;
  }
  return static_cast<int>(arrival.ssi_signo);
}

bool SignalHold::EndsTheProcess(int signal) {
  return signal != SIGCHLD && signal != SIGTSTP && signal != SIGCONT;
}

void SignalHold::Deliver(int signal) {
  if (signal == SIGCONT) {
    return;  // once more, it would undo a stop that has arrived since
  }
  sigset_t delivered = {};
  ::sigemptyset(&delivered);
  ::sigaddset(&delivered, signal);
  ::raise(signal);
  ::pthread_sigmask(SIG_UNBLOCK, &delivered, nullptr);  // it takes effect here
  ::pthread_sigmask(SIG_BLOCK, &delivered, nullptr);
}

}  // namespace ptick
