#pragma once

#include <cstddef>
#include <cstring>
#include <memory>
#include <utility>

namespace ptick {

/// An uninitialised byte buffer. The system maps a page only when it is written to, so a large
/// buffer costs a short run nothing.
class ByteBuffer {
 public:
  ByteBuffer() = default;
  explicit ByteBuffer(std::size_t size) : bytes_(Uninitialised(size)), size_(size) {}

  char* data() { return bytes_.get(); }
  std::size_t size() const { return size_; }

  /// Makes it `size` bytes large, the first `kept` of which stay what they are.
  void Grow(std::size_t size, std::size_t kept) {
    Bytes larger = Uninitialised(size);
    if (kept > 0) {
      std::memcpy(larger.get(), bytes_.get(), kept);
    }
    bytes_ = std::move(larger);
    size_ = size;
  }

 private:
  using Bytes = std::unique_ptr<char[]>;  // NOLINT(*-avoid-c-arrays): left uninitialised
  static Bytes Uninitialised(std::size_t size) {
    return std::make_unique_for_overwrite<char[]>(size);  // NOLINT(*-avoid-c-arrays)
  }

  Bytes bytes_;
  std::size_t size_ = 0;
};

}  // namespace ptick
