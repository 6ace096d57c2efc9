#include "companion/terminal_text.h"

#include <algorithm>
#include <cstddef>
#include <span>

#include "companion/utf8.h"
#include "output/terminal_text.h"

namespace ptick::companion {

bool DrivesTerminal(char32_t code) {
  if (code < 0x80) {
    return code < 0x20 || code == 0x7F;
  }
  std::string character;
  AppendCharacter(character, code);
  MakeHarmless(character);
  return character == "?";
}

void AppendTerminalText(std::string& safe, std::string_view text, TextPlace place) {
  const std::size_t begin = safe.size();
  safe += text;
  safe.resize(begin + MakeHarmless(std::span<char>(safe).subspan(begin)));
  const auto first = safe.begin() + static_cast<std::ptrdiff_t>(begin);
  if (place != TextPlace::kLines) {
    std::replace(first, safe.end(), '\n', '?');
  }
  if (place == TextPlace::kCell) {
    std::replace(first, safe.end(), '\t', '?');
  }
}

std::string TerminalText(std::string_view text, TextPlace place) {
  std::string safe;
  AppendTerminalText(safe, text, place);
  return safe;
}

}  // namespace ptick::companion
