#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace ptick {

/// Where printed bytes go.
enum class Stream {
  kOutput,       ///< standard output, descriptor 1: reports and results
  kDiagnostics,  ///< standard error, descriptor 2: messages and usage
};

/// The size of a terminal in cells, at least 1 each.
struct TerminalSize {
  std::int64_t rows = 24;
  std::int64_t columns = 80;
};

/// What a program prints on and is answered from: standard output, standard error and the keyboard.
class Console {
 public:
  Console() = default;
  Console(const Console&) = delete;
  Console& operator=(const Console&) = delete;
  virtual ~Console() = default;

  /// Writes all bytes; 0, or the error number of the system.
  virtual int Write(Stream stream, std::string_view bytes) = 0;
  /// Whether the stream ends at a real terminal.
  virtual bool IsTerminal(Stream stream) = 0;
  /// Whether keys can be asked for: standard input is a terminal.
  virtual bool HasKeyboard() = 0;
  /// The size of the terminal on standard output as it is now.
  virtual TerminalSize Size() = 0;
  /// Shows `prompt` at the place of the cursor, the start of a row of that terminal, and waits for
  /// one of `keys`; other keys do nothing. Returns the key; nothing when there is no more input.
  /// The prompt is gone and the terminal as it was found when this returns, and when a signal ends
  /// the wait or interrupts it.
  virtual std::optional<char> AskForKey(std::string_view prompt, std::string_view keys) = 0;
};

}  // namespace ptick
