#pragma once

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <string_view>
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
    const std::optional<std::size_t> size = Copy(at_, block);
    at_ += size.value_or(0);
    return size;
  }

  std::optional<std::uint64_t> Size() const override { return text_.size(); }

  std::optional<std::size_t> ReadAt(std::uint64_t place, std::span<char> block,
                                    int& error) const override {
    const std::optional<std::size_t> size = Copy(static_cast<std::size_t>(place), block);
    error = size ? error : kErrorAt;
    return size;
  }

  static constexpr int kErrorAt = ENOLCK;  ///< why ReadAt fails: as nothing else does

 private:
  std::optional<std::size_t> Copy(std::size_t place, std::span<char> block) const {
    const std::string_view rest = std::string_view(text_).substr(std::min(place, text_.size()));
    const std::size_t size = rest.copy(block.data(), std::min(piece_, block.size()));
    return size == 0 && end_ == End::kFails ? std::nullopt : std::optional(size);
  }

  std::string text_;
  std::size_t piece_;
  End end_;
  std::size_t at_ = 0;
};

}  // namespace ptick::testing
