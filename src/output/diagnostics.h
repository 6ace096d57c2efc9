#pragma once

#include <string>
#include <string_view>

#include "platform/console.h"

namespace ptick {

/// What goes to standard error, a line at a time; on a terminal, made harmless (terminal_text.h).
class Diagnostics {
 public:
  /// `program` is the name that messages begin with.
  Diagnostics(Console& console, std::string_view program) : console_(console), program_(program) {}

  /// Prints a line as it is. False when it could not be written, unless its reader has gone.
  bool PrintLine(std::string_view line);

  /// Prints the name of the program, ": " and the text.
  void PrintMessage(std::string_view text);

 private:
  Console& console_;
  std::string program_;
};

}  // namespace ptick
