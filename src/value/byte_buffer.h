#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <new>
#include <utility>

namespace ptick {

/// An uninitialised byte buffer. The system maps a page only when it is written to, so a large
/// buffer costs a short run nothing; and where it can, it moves the pages of one that grows instead
/// of copying them.
class ByteBuffer {
 public:
  ByteBuffer() = default;
  explicit ByteBuffer(std::size_t size) { Grow(size, 0); }
  ByteBuffer(ByteBuffer&& other) noexcept
      : bytes_(std::move(other.bytes_)), size_(std::exchange(other.size_, 0)) {}
  ByteBuffer& operator=(ByteBuffer&& other) noexcept {
    bytes_ = std::move(other.bytes_);
    size_ = std::exchange(other.size_, 0);
    return *this;
  }
  ByteBuffer(const ByteBuffer&) = delete;
  ByteBuffer& operator=(const ByteBuffer&) = delete;
  ~ByteBuffer() = default;

  char* data() { return bytes_.get(); }
  const char* data() const { return bytes_.get(); }
  std::size_t size() const { return size_; }

  /// Makes it `size` bytes large, the first `kept` of which stay what they are.
  void Grow(std::size_t size, std::size_t kept) {
    if (kept == 0) {
      bytes_.reset();
    }
    const std::size_t some = std::max<std::size_t>(size, 1);
    auto* const larger = static_cast<char*>(std::realloc(bytes_.get(), some));
    if (larger == nullptr) {
      throw std::bad_alloc();
    }
    static_cast<void>(bytes_.release());  // it is part of the larger one, or gone
    bytes_.reset(larger);
    size_ = size;
  }

 private:
  struct Free {
    void operator()(char* bytes) const { std::free(bytes); }
  };

  std::unique_ptr<char[], Free> bytes_;  // NOLINT(*-avoid-c-arrays): left uninitialised
  std::size_t size_ = 0;
};

}  // namespace ptick
