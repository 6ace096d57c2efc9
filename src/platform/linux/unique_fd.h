#pragma once

#include <unistd.h>

#include <utility>

namespace ptick {

/// A file descriptor with one owner, closed when the owner goes away.
///
/// Threads: one at a time.
class UniqueFd {
 public:
  UniqueFd() = default;
  /// Takes `fd` over; a negative number means none, as a failed open returns it.
  explicit UniqueFd(int fd) : fd_(fd) {}
  UniqueFd(const UniqueFd&) = delete;
  UniqueFd& operator=(const UniqueFd&) = delete;
  UniqueFd(UniqueFd&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
  UniqueFd& operator=(UniqueFd&& other) noexcept {
    if (this != &other) {
      Close();
      fd_ = std::exchange(other.fd_, -1);
    }
    return *this;
  }
  ~UniqueFd() { Close(); }

  /// The descriptor, -1 when there is none.
  int Get() const { return fd_; }
  bool IsOpen() const { return fd_ >= 0; }

  /// Closes the descriptor now, if there is one.
  void Close() {
    if (fd_ >= 0) {
      ::close(std::exchange(fd_, -1));
    }
  }

 private:
  int fd_ = -1;
};

}  // namespace ptick
