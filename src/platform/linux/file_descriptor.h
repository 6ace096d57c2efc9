#pragma once

#include <unistd.h>

#include <utility>

namespace ptick {

/// An open file descriptor, closed with its owner; or none.
class FileDescriptor {
 public:
  FileDescriptor() = default;
  /// Takes over `descriptor`; a negative one, as a failed open returns, is none.
  explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}
  FileDescriptor(FileDescriptor&& other) noexcept
      : descriptor_(std::exchange(other.descriptor_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(descriptor_, other.descriptor_);
    return *this;
  }
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  ~FileDescriptor() { Close(); }

  bool IsOpen() const { return descriptor_ >= 0; }
  int Get() const { return descriptor_; }

  /// Closes it now; harmless when there is none.
  void Close() {
    if (IsOpen()) {
      close(std::exchange(descriptor_, -1));
    }
  }

 private:
  int descriptor_ = -1;
};

}  // namespace ptick
