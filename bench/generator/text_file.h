#pragma once

#include <charconv>
#include <concepts>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace ptick::bench {

/// A text file being written through one large buffer. A failure throws std::runtime_error.
class TextFile {
 public:
  explicit TextFile(const std::filesystem::path& path);

  TextFile& Put(std::string_view text) {
    Reserve(text.size());
    used_ += text.copy(buffer_.data() + used_, text.size());
    return *this;
  }

  /// Decimal digits.
  TextFile& Put(std::unsigned_integral auto number) {
    constexpr std::size_t kMaxDigits = 20;
    Reserve(kMaxDigits);
    char* const at = buffer_.data() + used_;
    used_ += static_cast<std::size_t>(std::to_chars(at, at + kMaxDigits, number).ptr - at);
    return *this;
  }

  /// Writes what is left; the last call.
  void Close();

 private:
  void Reserve(std::size_t size) {
    if (buffer_.size() - used_ < size) {
      Flush();
    }
  }
  void Flush();

  std::filesystem::path path_;
  std::ofstream file_;
  std::string buffer_;
  std::size_t used_ = 0;
};

}  // namespace ptick::bench
