#include "companion/text_form.h"

#include <charconv>
#include <cstring>

namespace ptick::companion {

bool ObeysSequences(const char* term) {
  return term != nullptr && *term != '\0' && std::strcmp(term, "dumb") != 0;
}

bool UsesColor(ColorWhen when, const ColorSigns& signs) {
  if (when != ColorWhen::kAuto) {
    return when == ColorWhen::kAlways;
  }
  const bool is_unwanted = signs.no_color != nullptr && *signs.no_color != '\0';
  return signs.to_terminal && !is_unwanted && ObeysSequences(signs.term);
}

std::size_t TerminalColumns(const char* columns, std::optional<std::size_t> terminal) {
  constexpr std::size_t kMax = 32767;
  constexpr std::size_t kUsual = 80;
  if (columns != nullptr) {
    const char* end = columns + std::strlen(columns);
    std::size_t wanted = 0;
    const auto [stop, error] = std::from_chars(columns, end, wanted);
    if (error == std::errc() && stop == end && wanted >= 1 && wanted <= kMax) {
      return wanted;
    }
  }
  return terminal && *terminal > 0 ? *terminal : kUsual;
}

std::string_view StyleSequence(Style style) {
  switch (style) {
    case Style::kPlain:
      break;
    case Style::kHeading:
      return "\x1b[1m";
    case Style::kHot:
      return "\x1b[1;31m";
    case Style::kWarm:
      return "\x1b[33m";
    case Style::kFaint:
      return "\x1b[2m";
    case Style::kAdded:
      return "\x1b[32m";
    case Style::kRemoved:
      return "\x1b[31m";
  }
  return "";
}

}  // namespace ptick::companion
