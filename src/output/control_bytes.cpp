#include "output/control_bytes.h"

#include <algorithm>

namespace ptick {

namespace {

bool IsControl(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return (byte < 32 && c != '\n') || byte == 127;
}

}  // namespace

void ShowControlBytes(std::span<char> text) { std::ranges::replace_if(text, IsControl, '?'); }

}  // namespace ptick
