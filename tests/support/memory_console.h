#pragma once

#include <cstddef>
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

  TerminalSize size;
  bool output_is_terminal = false;
  bool diagnostics_are_on_terminal = false;
  bool keyboard = false;
  std::deque<char> keys;  ///< what is typed, key by key; the input ends after the last
  /// The sizes that the terminal is given while the prompts wait, from the first on.
  std::deque<TerminalSize> later_sizes;
  int output_error = 0;       ///< what writing to standard output gives instead of taking the bytes
  int diagnostics_error = 0;  ///< the same for diagnostics

  // --- What the program left ---

  std::string printed;      ///< all bytes of standard output
  std::string on_terminal;  ///< all bytes of the diagnostics
  /// Both in the order of writing; neighbours to the same stream are joined.
  std::vector<std::pair<Stream, std::string>> transcript;
  /// The prompts shown, and how much had been printed on standard output then.
  std::vector<std::pair<std::string, std::size_t>> prompts;

  // --- Console ---

  int Write(Stream stream, std::string_view bytes) override;
  bool IsTerminal(Stream stream) override;
  bool HasKeyboard() override { return keyboard; }
  TerminalSize Size() override { return size; }
  std::optional<char> AskForKey(std::string_view prompt, std::string_view keys_wanted) override;
};

}  // namespace ptick
