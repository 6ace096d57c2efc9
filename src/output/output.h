#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "output/diagnostics.h"
#include "output/output_buffer.h"
#include "output/page_heading.h"
#include "output/pages.h"
#include "output/stop.h"
#include "platform/console.h"
#include "value/byte_buffer.h"

namespace ptick {

/// Prints report lines on standard output and diagnostics on standard error, in the order given.
///
/// Elsewhere than on a terminal, output is one page without end: the heading once, before the first
/// line, every byte as it is. On a terminal it comes in pages and is made harmless
/// (terminal_text.h).
///
/// Any call may end the run by throwing Stop, as OutputBuffer and Pages say.
class Output {
 public:
  /// `program` is the name that messages begin with.
  Output(Console& console, std::string_view program);

  /// Sets the heading of the pages to come. Called at most once, before the first line.
  void SetHeading(PageHeading heading);

  /// Prints a line and ends it.
  void PrintLine(std::string_view line);

  /// Room for a line of at most `most` bytes. Write it there, then call EndLineAt with the address
  /// after its last byte; nothing else may be printed between the two calls.
  char* LineRoom(std::size_t most) {
    return begin_line_needed_ || buffer_.Room() <= most ? BeginLine(most) : buffer_.End();
  }
  void EndLineAt(char* end) {
    if (on_terminal_) {
      EndTerminalLine(end);
    } else {
      *end = '\n';
      buffer_.SetEnd(end + 1);
    }
  }

  /// Whether lines go out as they are, not in pages: PrintLines can be called then.
  bool IsPlain() const { return !on_terminal_; }
  /// Prints lines, each with its end.
  void PrintLines(std::string_view lines);

  /// Prints a line on standard error, after all that was printed before. False when it could not be
  /// written, unless its reader has gone.
  bool PrintTerminal(std::string_view line);

  /// Prints the name of the program, ": " and the text on standard error, after all that was
  /// printed before.
  void PrintMessage(std::string_view text);

  /// Something has failed and been told, and the run goes on: where it would end with status 0, it
  /// ends with 1.
  void FailAtEnd() { end_status_ = kFailure; }
  /// The status of a run that comes to its normal end.
  ExitStatus EndStatus() const { return end_status_; }

  /// Ends the output of a run that came to its normal end: a heading that has seen no line is
  /// printed, and all is written.
  void Finish();

  /// Ends the output of a run that stops early: what was printed is written, nothing is added.
  void Close();

 private:
  char* BeginLine(std::size_t most);
  void EndTerminalLine(char* end);
  void PrintHeading();

  Console& console_;
  Diagnostics diagnostics_;
  OutputBuffer buffer_;
  bool on_terminal_;
  bool begin_line_needed_;              ///< a heading is due, or output is a terminal
  std::optional<PageHeading> heading_;  ///< due before the next line; never on a terminal
  std::optional<Pages> pages_;          ///< on a terminal
  ByteBuffer terminal_line_;            ///< on a terminal, a line is laid out here
  ExitStatus end_status_ = kSuccess;
};

}  // namespace ptick
