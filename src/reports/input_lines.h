#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "figures/seconds_text.h"
#include "profile/tables/keyboard_inputs.h"
#include "value/value.h"

namespace ptick {

/// The lines of a keyboard replay script for the recorded inputs: for each a pause where one is
/// known, with a typing rate a typing delay, and what was typed.
class InputLines {
 public:
  explicit InputLines(bool typing_rate) : typing_rate_(typing_rate), seconds_(Value(0)) {}

  /// Appends the lines of all inputs, each ended by LF.
  void AppendAll(const KeyboardInputs& inputs, std::string& lines);

 private:
  void Set(const ClockSetting& setting);
  void SetLastClock(std::string_view clock);
  bool HasOrdinaryClock() const { return seconds_.IsQuick() && ordinary_last_clock_; }
  bool AppendOrdinary(const KeyboardInputs& inputs, std::size_t n, std::string& lines);
  char* PutTimes(const std::array<std::uint32_t, 4>& numbers, char* at);
  void Append(const KeyboardInput& input, std::string& lines);

  bool typing_rate_;
  std::optional<Value> hertz_;  ///< a number; nothing when pauses cannot be computed
  SecondsText seconds_;

  /// Where the next pause is measured from: an ordinary number, or any value.
  std::optional<std::uint32_t> ordinary_last_clock_ = 0;
  Value last_clock_;
};

}  // namespace ptick
