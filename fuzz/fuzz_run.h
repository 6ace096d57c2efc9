#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "driver/driver.h"
#include "support/memory_platform.h"

namespace ptick {

/// The bytes of a fuzz input, taken from the front.
class FuzzInput {
 public:
  FuzzInput(const std::uint8_t* data, std::size_t size)
      : rest_(reinterpret_cast<const char*>(data), size) {}  // NOLINT(*-reinterpret-cast)

  std::uint8_t TakeByte() {
    if (rest_.empty()) {
      return 0;
    }
    const auto byte = static_cast<std::uint8_t>(rest_.front());
    rest_.remove_prefix(1);
    return byte;
  }

  /// Everything up to the next `end`, which is taken too.
  std::string TakeUpTo(char end) {
    const std::string text(rest_.substr(0, rest_.find(end)));
    rest_.remove_prefix(std::min(rest_.size(), text.size() + 1));
    return text;
  }

  std::string TakeRest() { return std::string(std::exchange(rest_, {})); }

  bool Empty() const { return rest_.empty(); }

 private:
  std::string_view rest_;
};

/// Options that each choose another way through the program.
inline constexpr std::array<std::string_view, 16> kFuzzOptions = {
    "-",  "-n",  "-nu", "-nui", "-i",  "-a",     "-p",      "-pv",
    "-o", "-ov", "-s",  "-A",   "-Av", "-kkeys", "-tkkeys", "-fsrc"};

}  // namespace ptick
