#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "value/byte_buffer.h"

namespace ptick {

/// Lines laid out apart from the output, on any thread, which Output::PrintLines prints later.
class LineBlock {
 public:
  /// As those of Output.
  char* LineRoom(std::size_t most) {
    if (bytes_.size() - used_ <= most) {
      bytes_.Grow(std::max(2 * bytes_.size(), used_ + most + 1), used_);
    }
    return bytes_.data() + used_;
  }
  void EndLineAt(char* end) {
    *end = '\n';
    used_ = static_cast<std::size_t>(end + 1 - bytes_.data());
  }
  void PrintLine(std::string_view line) {
    EndLineAt(std::ranges::copy(line, LineRoom(line.size())).out);
  }

  /// Forgets all lines; the memory stays.
  void Clear() { used_ = 0; }

  /// All lines, each with its end; valid until the next change.
  std::string_view Lines() { return {bytes_.data(), used_}; }

 private:
  ByteBuffer bytes_;
  std::size_t used_ = 0;
};

}  // namespace ptick
