// What a result for people looks like: colours, and the room on a terminal.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace ptick::companion {

/// The values of --color.
enum class ColorWhen { kAuto, kAlways, kNever };

/// What decides on colours besides the option.
struct ColorSigns {
  bool to_terminal = false;
  /// The environment variables NO_COLOR and TERM, null when not set.
  const char* no_color = nullptr;
  const char* term = nullptr;
};

/// By itself, colour goes to terminals that know it, where NO_COLOR is not set or empty. An
/// explicit
/// --color wins over all of this.
bool UsesColor(ColorWhen when, const ColorSigns& signs);

/// Whether a terminal of this type (TERM, null when not set) obeys colours and the like.
bool ObeysSequences(const char* term);

/// The columns of a terminal: COLUMNS when that is a whole number from 1 to 32767, else what the
/// terminal says, else 80.
std::size_t TerminalColumns(const char* columns, std::optional<std::size_t> terminal);

struct TextForm {
  bool to_terminal = false;
  bool has_color = false;
  /// The columns that lines are cut to; absent where they are not cut.
  std::optional<std::size_t> columns;
};

/// What a piece of text is, for its colour.
enum class Style { kPlain, kHeading, kHot, kWarm, kFaint, kAdded, kRemoved };

/// The sequence that switches a terminal to a style, empty for kPlain.
std::string_view StyleSequence(Style style);

/// The sequence that switches it back.
constexpr std::string_view kPlainSequence = "\x1b[0m";

}  // namespace ptick::companion
