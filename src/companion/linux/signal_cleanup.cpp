#include "companion/linux/signal_cleanup.h"

#include <poll.h>
#include <pthread.h>
#include <sched.h>
#include <unistd.h>

#include <array>
#include <atomic>

namespace ptick::companion {

namespace {

constexpr std::array kDeadlySignals = {SIGHUP,  SIGINT,  SIGQUIT, SIGTERM, SIGALRM,
                                       SIGUSR1, SIGUSR2, SIGXCPU, SIGPROF, SIGVTALRM};

// A signal handler can reach nothing but what is static.
// NOLINTBEGIN(*-avoid-non-const-global-variables)
std::atomic_flag g_is_locked;
DoomedFile* g_doomed = nullptr;
std::atomic<bool> g_is_status_line_shown = false;
// NOLINTEND(*-avoid-non-const-global-variables)
static_assert(std::atomic<bool>::is_always_lock_free);

void Lock() {
  while (g_is_locked.test_and_set(std::memory_order_acquire)) {
    ::sched_yield();  // another thread is between two system calls
  }
}

void EraseStatusLine() {
  // A terminal that is held up by Ctrl-S must not hold up the end.
  pollfd terminal = {.fd = STDERR_FILENO, .events = POLLOUT, .revents = 0};
  if (g_is_status_line_shown && ::poll(&terminal, 1, 0) == 1) {
    [[maybe_unused]] const ssize_t ignored =
        ::write(STDERR_FILENO, kEraseLine.data(), kEraseLine.size());
  }
}

extern "C" void EndBySignal(int signal) {
  // Never unlocked: nothing is entered any more.
  Lock();
  for (const DoomedFile* file = g_doomed; file != nullptr; file = file->next) {
    ::unlinkat(file->directory, file->name, 0);
  }
  EraseStatusLine();
  struct sigaction usual = {};
  usual.sa_handler = SIG_DFL;
  ::sigaction(signal, &usual, nullptr);
  sigset_t its = {};
  ::sigemptyset(&its);
  ::sigaddset(&its, signal);
  ::raise(signal);
  ::pthread_sigmask(SIG_UNBLOCK, &its, nullptr);  // it takes effect here
  ::_exit(128 + signal);
}

}  // namespace

void InstallSignalCleanup() {
  for (const int signal : kDeadlySignals) {
    struct sigaction action = {};
    if (::sigaction(signal, nullptr, &action) != 0 || action.sa_handler == SIG_IGN) {
      continue;
    }
    action = {};
    action.sa_handler = EndBySignal;
    ::sigfillset(&action.sa_mask);
    ::sigaction(signal, &action, nullptr);
  }
}

CleanupLock::CleanupLock() {
  sigset_t all = {};
  ::sigfillset(&all);
  // First of all: a handler in this thread would wait for this thread for ever.
  ::pthread_sigmask(SIG_BLOCK, &all, &mask_before_);
  Lock();
}

CleanupLock::~CleanupLock() {
  g_is_locked.clear(std::memory_order_release);
  ::pthread_sigmask(SIG_SETMASK, &mask_before_, nullptr);
}

void Doom(DoomedFile& file, const CleanupLock& /*lock*/) {
  file.next = g_doomed;
  g_doomed = &file;
}

void Spare(const DoomedFile& file, const CleanupLock& /*lock*/) {
  for (DoomedFile** at = &g_doomed; *at != nullptr; at = &(*at)->next) {
    if (*at == &file) {
      *at = file.next;
      return;
    }
  }
}

void SetStatusLineShown(bool is_shown) { g_is_status_line_shown = is_shown; }

}  // namespace ptick::companion
