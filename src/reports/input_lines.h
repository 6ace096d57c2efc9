#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "profile/tables/keyboard_inputs.h"
#include "value/value.h"

namespace ptick {

/// The lines of a keyboard replay script for the recorded inputs: for each a pause where one is
/// known, with a typing rate a typing delay, and what was typed.
class InputLines {
 public:
  explicit InputLines(bool typing_rate) : typing_rate_(typing_rate) {}

  /// Appends the lines of all inputs, each ended by LF.
  void AppendAll(const KeyboardInputs& inputs, std::string& lines);

 private:
  void Set(const ClockSetting& setting);
  void Append(const KeyboardInput& input, std::string& lines);

  bool typing_rate_;
  std::optional<Value> hertz_;  ///< a number; nothing when pauses cannot be computed
  Value last_clock_ = 0;        ///< where the next pause is measured from
};

}  // namespace ptick
