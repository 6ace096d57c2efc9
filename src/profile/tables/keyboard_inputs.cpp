#include "profile/tables/keyboard_inputs.h"

#include <algorithm>

namespace ptick {

void KeyboardInputs::Add(const Texts& texts) {
  std::array<NumberTexts::Id, 4> numbers{};
  std::ranges::transform(texts.numbers, numbers.begin(),
                         [this](std::string_view text) { return values_.Add(text); });
  AddIds(numbers, texts.text);
}

// Numbers of the usual form are their own places.
void KeyboardInputs::Add(const InputLine& line) { AddIds(line.numbers, line.text); }

void KeyboardInputs::AddIds(const std::array<NumberTexts::Id, 4>& numbers, std::string_view text) {
  numbers_.Append(numbers);
  texts_.Append(text);
  text_size_ += text.size();
}

void KeyboardInputs::Add(ClockSetting::Kind kind, std::string_view value) {
  for (auto last = settings_.rbegin(); last != settings_.rend() && last->inputs_before == Count();
       ++last) {
    if (last->kind == kind) {
      last->value = value;
      return;
    }
  }
  settings_.push_back({Count(), kind, std::string(value)});
}

KeyboardInput KeyboardInputs::operator[](std::size_t n) const {
  const std::array<NumberTexts::Id, 4>& numbers = numbers_[n];
  return {.code = values_.Text(numbers[0]),
          .characters = values_.Text(numbers[1]),
          .start_clock = values_.Text(numbers[2]),
          .end_clock = values_.Text(numbers[3]),
          .text = texts_[n]};
}

std::optional<std::array<std::uint32_t, 4>> KeyboardInputs::OrdinaryNumbers(std::size_t n) const {
  const std::array<NumberTexts::Id, 4>& numbers = numbers_[n];
  return std::ranges::all_of(numbers, NumberTexts::IsOrdinary) ? std::optional(numbers)
                                                               : std::nullopt;
}

}  // namespace ptick
