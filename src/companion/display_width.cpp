#include "companion/display_width.h"

#include "output/character_width.h"
#include "output/utf8.h"

namespace ptick::companion {

namespace {

struct Step {
  std::size_t bytes;
  std::size_t columns;
};

Step FirstStep(std::string_view text) {
  const auto first = static_cast<unsigned char>(text.front());
  if (first < 0x80) {
    return {.bytes = 1, .columns = 1};
  }
  const DecodedCharacter character = DecodeCharacter(text);
  const int columns = character.code ? CharacterWidth(*character.code) : 1;
  return {.bytes = character.size, .columns = static_cast<std::size_t>(columns)};
}

}  // namespace

std::size_t DisplayWidth(std::string_view utf8) {
  std::size_t columns = 0;
  while (!utf8.empty()) {
    const Step step = FirstStep(utf8);
    columns += step.columns;
    utf8.remove_prefix(step.bytes);
  }
  return columns;
}

std::string_view FittingPart(std::string_view utf8, std::size_t columns) {
  std::size_t taken = 0;
  while (taken < utf8.size()) {
    const Step step = FirstStep(utf8.substr(taken));
    if (step.columns > columns) {
      break;
    }
    columns -= step.columns;
    taken += step.bytes;
  }
  return utf8.substr(0, taken);
}

std::string CutToWidth(std::string_view utf8, std::size_t columns) {
  constexpr std::string_view kMark = "...";
  if (FittingPart(utf8, columns).size() == utf8.size()) {
    return std::string(utf8);
  }
  if (columns <= kMark.size()) {
    return std::string(kMark.substr(0, columns));
  }
  return std::string(FittingPart(utf8, columns - kMark.size())).append(kMark);
}

}  // namespace ptick::companion
