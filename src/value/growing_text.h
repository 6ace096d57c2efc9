#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>
#include <utility>

#include "value/byte_buffer.h"

namespace ptick {

/// A text that grows at its end, to any size. Other than a std::string it is, where the system can
/// do it, not copied to grow, so that its memory is never needed twice.
class GrowingText {
 public:
  GrowingText() = default;
  GrowingText(const GrowingText& other) { Append({other.data(), other.size()}); }
  GrowingText& operator=(const GrowingText& other) {
    *this = GrowingText(other);
    return *this;
  }
  GrowingText(GrowingText&& other) noexcept
      : bytes_(std::move(other.bytes_)), size_(std::exchange(other.size_, 0)) {}
  GrowingText& operator=(GrowingText&& other) noexcept {
    bytes_ = std::move(other.bytes_);
    size_ = std::exchange(other.size_, 0);
    return *this;
  }
  ~GrowingText() = default;

  /// `text` is no part of this.
  void Append(std::string_view text) {
    if (text.size() > bytes_.size() - size_) {
      constexpr std::size_t kFirstSize = 64;
      bytes_.Grow(std::max({size_ + text.size(), 2 * bytes_.size(), kFirstSize}), size_);
    }
    if (!text.empty()) {  // an empty view may be null
      std::memcpy(bytes_.data() + size_, text.data(), text.size());
      size_ += text.size();
    }
  }

  const char* data() const { return bytes_.data(); }
  std::size_t size() const { return size_; }

 private:
  ByteBuffer bytes_;
  std::size_t size_ = 0;
};

}  // namespace ptick
