// What the parts of a document are written with.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "companion/json_writer.h"
#include "compare/key_names.h"
#include "ptick_export/formats/json_values.h"
#include "ptick_export/formats/profile_names.h"
#include "ptick_view/limits.h"
#include "ptick_view/program_names.h"

namespace ptick::view {

struct DocumentWriter {
  companion::JsonWriter& json;
  const Limits& limits;
  exports::ProfileNames names;
  ProgramNames programs = {};
  LeftOutList left_out = {};

  /// No digit is lost where JSON is read into floating numbers.
  template <typename Any>
  void Count(const Any& number) {
    exports::WriteNumber(json, number, exports::BigNumbers::kAsTexts);
  }

  /// A column of a table.
  template <typename Write>
  void Column(std::string_view key, std::size_t rows, Write write) {
    json.Key(key).BeginArray();
    for (std::size_t row = 0; row < rows; ++row) {
      write(row);
    }
    json.EndArray();
  }

  /// A line as its number where it is written the ordinary way, else its text.
  void Line(const compare::KeyNames& key_names, std::uint32_t line);

  /// Four significant digits, null for what is no number.
  void Short(double number);

  /// Notes that rows did not get in, if so; with their ticks where they have some.
  void LeaveOut(std::string_view what, std::size_t kept, std::size_t all,
                std::optional<Number> ticks = std::nullopt) {
    if (kept < all) {
      left_out.push_back({.what = what, .count = all - kept, .of = all, .ticks = ticks});
    }
  }
};

}  // namespace ptick::view
