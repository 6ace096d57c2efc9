#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "profile/scan/input_line.h"
#include "profile/ticks/number_texts.h"
#include "value/chunk_list.h"
#include "value/field_list.h"

namespace ptick {

/// One input at the keyboard, as it was read. Clocks are in clock ticks.
struct KeyboardInput {
  std::string code;         ///< of the character that ended it; 0 or empty: none did
  std::string characters;   ///< how many were typed
  std::string start_clock;  ///< when the program began to wait
  std::string end_clock;    ///< when it had its input
  std::string_view text;    ///< what was typed, TABs included
};

/// A "hertz" or "startclock" record: pauses and typing times of the inputs after it are measured by
/// it.
struct ClockSetting {
  enum class Kind { kHertz, kStartClock };

  std::size_t inputs_before;  ///< how many inputs were recorded before it
  Kind kind;
  std::string value;
};

/// The recorded keyboard inputs, in recorded order, and the settings of the clock among them.
class KeyboardInputs {
 public:
  struct Texts {
    std::array<std::string_view, 4> numbers;  ///< code, characters, start clock, end clock
    std::string_view text;
  };

  void Add(const Texts& texts);
  void Add(const InputLine& line);
  void Add(ClockSetting::Kind kind, std::string_view value);

  std::size_t Count() const { return numbers_.size(); }
  KeyboardInput operator[](std::size_t n) const;

  /// The numbers of input n, as in Texts, where all of them are written the ordinary way.
  std::optional<std::array<std::uint32_t, 4>> OrdinaryNumbers(std::size_t n) const;
  /// What was typed.
  std::string_view Text(std::size_t n) const { return texts_[n]; }
  /// The size of all that was typed.
  std::size_t TextSize() const { return text_size_; }

  /// In recorded order; of settings of one kind with no input between them only the last.
  const std::vector<ClockSetting>& ClockSettings() const { return settings_; }

 private:
  void AddIds(const std::array<NumberTexts::Id, 4>& numbers, std::string_view text);

  NumberTexts values_;
  ChunkList<std::array<NumberTexts::Id, 4>> numbers_;
  FieldList texts_;
  std::size_t text_size_ = 0;
  std::vector<ClockSetting> settings_;
};

}  // namespace ptick
