#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/console.h"

namespace ptick {

/// A console that is nothing but memory. Everything not set is absent, empty or the default shown
/// here.
class MemoryConsole : public virtual Console {
 public:
  // --- What the program finds ---

  std::int64_t length = 24;
  bool output_is_terminal = false;
  bool diagnostics_are_on_terminal = false;
  bool keyboard = false;
  std::deque<char> keys;      ///< what is typed, key by key; the input ends after the last
  int output_error = 0;       ///< what writing to standard output gives instead of taking the bytes
  int diagnostics_error = 0;  ///< the same for diagnostics

  // --- What the program left ---

  std::string printed;      ///< all bytes of standard output
  std::string on_terminal;  ///< all bytes of the diagnostics
  /// Both in the order of writing; neighbours to the same stream are joined.
  std::vector<std::pair<Stream, std::string>> transcript;
  int keys_asked_for = 0;

  // --- Console ---

  int Write(Stream stream, std::string_view bytes) override;
  bool IsTerminal(Stream stream) override;
  bool HasKeyboard() override { return keyboard; }
  std::int64_t PageLength() override { return length; }
  std::optional<char> ReadKey() override;
};

}  // namespace ptick
