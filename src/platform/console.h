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
  /// The number of lines of the terminal on standard output, at least 1.
  virtual std::int64_t PageLength() = 0;
  /// Waits for a key press and returns its byte, unechoed; nothing when there is no more input. The
  /// terminal is left as it was found, also when a signal ends the wait.
  virtual std::optional<char> ReadKey() = 0;
};

}  // namespace ptick
