// Loaded ahead of the system's library (LD_PRELOAD), lets one call of one kind fail:
//
//   PTICK_FAULT=KIND:OUTCOME:N    the N-th call of KIND from main on, N+ for that and all after it
//   PTICK_FAULT_MARK=FILE         gets a byte for each time it happens
//
// OUTCOME is an error number, or "short": the call does a part of what it is asked for. Programs
// started by the one that is disturbed are left alone.

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <pthread.h>
#include <sched.h>
#include <sys/signalfd.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <cstdlib>
#include <cstring>

// Runs inside allocations, so it uses nothing that allocates; the C library's own names are its way
// past itself.
// NOLINTBEGIN(*-reserved-identifier,readability-identifier-naming,*-avoid-c-arrays)

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
}

namespace {

struct Fault {
  char Kind[24];
  int Error;  // 0: a short call
  long Number;
  bool AndAllAfter;
  char Mark[512];
};

bool g_armed = false;
std::atomic<long> g_calls = 0;
Fault g_fault = {};

// Takes the text up to the next ':' off the front.
const char* TakeWord(const char* text, char* word, std::size_t room) {
  std::size_t used = 0;
  while (*text != '\0' && *text != ':') {
    if (used + 1 < room) {
      word[used++] = *text;
    }
    ++text;
  }
  word[used] = '\0';
  return *text == ':' ? text + 1 : text;
}

void ReadFault(const char* text, const char* mark) {
  char outcome[16] = {};
  text = TakeWord(text, g_fault.Kind, sizeof g_fault.Kind);
  text = TakeWord(text, outcome, sizeof outcome);
  g_fault.Error = std::atoi(outcome);
  char* end = nullptr;
  g_fault.Number = std::strtol(text, &end, 10);
  g_fault.AndAllAfter = *end == '+';
  std::strncpy(g_fault.Mark, mark, sizeof g_fault.Mark - 1);
  g_armed = true;
}

// Whether this call is the one; errno is set then.
bool Strikes(const char* kind) {
  if (!g_armed || std::strcmp(kind, g_fault.Kind) != 0) {
    return false;
  }
  const long call = ++g_calls;
  if (call != g_fault.Number && !(g_fault.AndAllAfter && call > g_fault.Number)) {
    return false;
  }
  const long mark =
      ::syscall(SYS_open, g_fault.Mark, O_CREAT | O_WRONLY | O_APPEND | O_CLOEXEC, 0600);
  ::syscall(SYS_write, mark, "x", 1);
  ::syscall(SYS_close, mark);
  errno = g_fault.Error;
  return true;
}

template <typename Function>
Function* Real(Function* /*like*/, const char* name) {
  void* found = ::dlsym(RTLD_NEXT, name);
  Function* real = nullptr;
  static_assert(sizeof real == sizeof found);
  std::memcpy(&real, &found, sizeof real);
  return real;
}

std::size_t Part(std::size_t size) { return g_fault.Error == 0 && size > 1 ? size / 2 : size; }

using Main = int(int, char**, char**);
Main* g_main = nullptr;

int DisturbedMain(int argc, char** argv, char** environment) {
  const char* fault = std::getenv("PTICK_FAULT");
  const char* mark = std::getenv("PTICK_FAULT_MARK");
  if (fault != nullptr && mark != nullptr) {
    ReadFault(fault, mark);
  }
  ::unsetenv("LD_PRELOAD");
  ::unsetenv("PTICK_FAULT");
  ::unsetenv("PTICK_FAULT_MARK");
  return g_main(argc, argv, environment);
}

mode_t ModeOf(int flags, va_list rest) {
  return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(rest, mode_t) : 0;
}

}  // namespace

// NOLINTBEGIN: the names and types are those of the system
extern "C" {

int __libc_start_main(Main* main, int argc, char** argv, void (*init)(), void (*fini)(),
                      void (*rtld_fini)(), void* stack_end) {
  g_main = main;
  return Real(&__libc_start_main, "__libc_start_main")(DisturbedMain, argc, argv, init, fini,
                                                       rtld_fini, stack_end);
}

void* malloc(std::size_t size) noexcept {
  return Strikes("malloc") ? nullptr : __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) noexcept {
  return Strikes("malloc") ? nullptr : __libc_calloc(count, size);
}

void* realloc(void* block, std::size_t size) noexcept {
  return Strikes("malloc") ? nullptr : __libc_realloc(block, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
  return Strikes("malloc") ? nullptr : __libc_memalign(alignment, size);
}

ssize_t read(int fd, void* buffer, std::size_t size) {
  const bool strikes = Strikes("read");
  if (strikes && g_fault.Error != 0) {
    return -1;
  }
  return ::syscall(SYS_read, fd, buffer, strikes ? Part(size) : size);
}

ssize_t pread(int fd, void* buffer, std::size_t size, off_t offset) {
  const bool strikes = Strikes("pread");
  if (strikes && g_fault.Error != 0) {
    return -1;
  }
  return ::syscall(SYS_pread64, fd, buffer, strikes ? Part(size) : size, offset);
}

ssize_t write(int fd, const void* buffer, std::size_t size) {
  const bool strikes = Strikes("write");
  if (strikes && g_fault.Error != 0) {
    return -1;
  }
  return ::syscall(SYS_write, fd, buffer, strikes ? Part(size) : size);
}

int openat(int directory, const char* name, int flags, ...) {
  if (Strikes("open")) {
    return -1;
  }
  va_list rest;
  va_start(rest, flags);
  const mode_t mode = ModeOf(flags, rest);
  va_end(rest);
  return static_cast<int>(::syscall(SYS_openat, directory, name, flags, mode));
}

int open(const char* name, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const mode_t mode = ModeOf(flags, rest);
  va_end(rest);
  return openat(AT_FDCWD, name, flags, mode);
}

int clone(int (*function)(void*), void* stack, int flags, void* argument, ...) noexcept {
  return Strikes("clone") ? -1 : Real(&clone, "clone")(function, stack, flags, argument);
}

// It returns the error number.
int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*function)(void*),
                   void* argument) noexcept {
  return Strikes("thread")
             ? g_fault.Error
             : Real(&pthread_create, "pthread_create")(thread, attributes, function, argument);
}

int pipe2(int* ends, int flags) noexcept {
  return Strikes("pipe2") ? -1 : Real(&pipe2, "pipe2")(ends, flags);
}

int signalfd(int fd, const sigset_t* mask, int flags) noexcept {
  return Strikes("signalfd") ? -1 : Real(&signalfd, "signalfd")(fd, mask, flags);
}

int socket(int domain, int type, int protocol) noexcept {
  return Strikes("socket") ? -1 : Real(&socket, "socket")(domain, type, protocol);
}

int connect(int fd, const sockaddr* address, socklen_t size) {
  return Strikes("connect") ? -1 : Real(&connect, "connect")(fd, address, size);
}

int getsockopt(int fd, int level, int name, void* value, socklen_t* size) noexcept {
  return Strikes("getsockopt") ? -1 : Real(&getsockopt, "getsockopt")(fd, level, name, value, size);
}

ssize_t send(int fd, const void* buffer, std::size_t size, int flags) {
  return Strikes("send") ? -1 : Real(&send, "send")(fd, buffer, size, flags);
}

ssize_t recv(int fd, void* buffer, std::size_t size, int flags) {
  return Strikes("recv") ? -1 : Real(&recv, "recv")(fd, buffer, size, flags);
}

int poll(pollfd* descriptors, nfds_t count, int timeout) {
  return Strikes("poll") ? -1 : Real(&poll, "poll")(descriptors, count, timeout);
}

int fstat(int fd, struct stat* status) noexcept {
  return Strikes("fstat") ? -1 : Real(&fstat, "fstat")(fd, status);
}

int fsync(int fd) { return Strikes("fsync") ? -1 : Real(&fsync, "fsync")(fd); }

int renameat(int from, const char* old_name, int to, const char* new_name) noexcept {
  return Strikes("rename") ? -1 : Real(&renameat, "renameat")(from, old_name, to, new_name);
}

DIR* fdopendir(int fd) { return Strikes("opendir") ? nullptr : Real(&fdopendir, "fdopendir")(fd); }

dirent* readdir(DIR* directory) {
  return Strikes("readdir") ? nullptr : Real(&readdir, "readdir")(directory);
}

}  // extern "C"
// NOLINTEND

// NOLINTEND(*-reserved-identifier,readability-identifier-naming,*-avoid-c-arrays)
