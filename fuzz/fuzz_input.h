#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace ptick::fuzz {

/// The bytes of a fuzz input, taken from the front. After its end there are zeros and empty texts.
class FuzzInput {
 public:
  FuzzInput(const std::uint8_t* data, std::size_t size)
      : rest_(size == 0 ? "" : reinterpret_cast<const char*>(data),  // NOLINT(*-reinterpret-cast)
              size) {}

  std::uint8_t TakeByte() {
    if (rest_.empty()) {
      return 0;
    }
    const auto byte = static_cast<std::uint8_t>(rest_.front());
    rest_.remove_prefix(1);
    return byte;
  }

  /// A number from `least` to `most`, at most 256 numbers.
  int TakeBetween(int least, int most) { return least + TakeByte() % (most - least + 1); }

  bool TakeFlag() { return TakeByte() % 2 != 0; }

  /// Everything up to the next `end`, which is taken too.
  std::string TakeUpTo(char end) {
    std::string text(rest_.substr(0, rest_.find(end)));
    rest_.remove_prefix(std::min(rest_.size(), text.size() + 1));
    return text;
  }

  std::string TakeRest() { return std::string(std::exchange(rest_, {})); }

  bool Empty() const { return rest_.empty(); }

 private:
  std::string_view rest_;
};

}  // namespace ptick::fuzz
