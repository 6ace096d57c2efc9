#pragma once

#include <algorithm>
#include <cstddef>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include "platform/platform.h"

namespace ptick::testing {

/// A record that hands out a text in pieces of at most `piece` bytes, and whose reading may fail
/// after the last of them.
class TextRecord final : public RecordReader {
 public:
  enum class End { kReached, kFails };

  explicit TextRecord(std::string text, std::size_t piece = std::numeric_limits<std::size_t>::max(),
                      End end = End::kReached)
      : text_(std::move(text)), piece_(piece), end_(end) {}

  std::optional<std::size_t> Read(std::span<char> block) override {
    const std::size_t size = std::min({piece_, block.size(), text_.size() - at_});
    if (size == 0 && end_ == End::kFails) {
      return std::nullopt;
    }
    text_.copy(block.data(), size, at_);
    at_ += size;
    return size;
  }

 private:
  std::string text_;
  std::size_t piece_;
  End end_;
  std::size_t at_ = 0;
};

}  // namespace ptick::testing
