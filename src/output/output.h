#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/console.h"
#include "value/byte_buffer.h"

namespace ptick {

/// What every page starts with: the title, " Page ", the page number and a line end, then the
/// columns and a line end. Both texts are plain; nothing inside them is interpreted. A name in them
/// may hold line ends, which make the heading so much longer.
struct PageHeading {
  std::string title;  ///< padded already so that the page number ends where it should
  std::string columns;
};

/// Prints report lines on standard output and diagnostics on the terminal, in the order given.
///
/// Elsewhere than on a terminal, output is one page without end: the heading once, in front of the
/// first line, every byte as it is. On a terminal, pages are as long as the terminal, each starts
/// with the heading and waits for a key when there is a keyboard, and control bytes are shown as
/// '?'. Without a heading nothing is paged.
///
/// A failed write prints "ptick: cannot write: REASON" on the terminal and throws Stop with status
/// 1; a reader that has closed the pipe, and the key `q`, throw Stop with EndStatus().
class Output {
 public:
  explicit Output(Console& console);

  /// Sets the heading of the pages to come. Called at most once, before the first line.
  void SetHeading(PageHeading heading);

  /// Prints a line and ends it.
  void PrintLine(std::string_view line);

  /// Room for a line of at most `most` bytes, to be laid out in place; EndLineAt takes the place
  /// behind its last byte and ends the line. Nothing else may be printed between the two calls.
  char* LineRoom(std::size_t most) {
    if (careful_ || buffer_.size() - used_ <= most) {
      BeginLine(most);
    }
    return buffer_.data() + used_;
  }
  void EndLineAt(char* end) {
    used_ = static_cast<std::size_t>(end - buffer_.data());
    if (on_terminal_) {
      EndTerminalLine();
    } else {
      *end = '\n';
      ++used_;
    }
  }

  /// Prints a line on the terminal, after all that was printed before. False when it could not be
  /// written, unless its reader has gone.
  bool PrintTerminal(std::string_view line);

  /// Prints a numbered platform message (201: cannot open a file; 202: cannot read a record) with
  /// the name that failed, on the terminal.
  void PrintMessage(int number, std::string_view name);

  /// Something has failed and been told, and the run goes on: where it would end with status 0, it
  /// ends with 1.
  void FailAtEnd() { end_status_ = 1; }
  /// The status of a run that comes to its normal end.
  int EndStatus() const { return end_status_; }

  /// Ends the output of a run that came to its normal end: a heading that has seen no line is
  /// printed, and all is written.
  void Finish();

  /// Ends the output of a run that stops early: what was printed is written, nothing is added.
  void Close();

  /// Writes what has been printed so far.
  void Flush();

 private:
  void BeginLine(std::size_t most);
  void EndTerminalLine();
  void StartPage();
  void WaitForKey();
  void ShowControlBytes(std::size_t from);
  void Append(std::string_view text);
  void Reserve(std::size_t size);

  Console& console_;
  bool on_terminal_;
  bool careful_;                ///< there is more to do for a line than to find room for it
  bool waits_ = false;          ///< a full page waits for a key
  bool line_end_held_ = false;  ///< a full page's last line end is held back to keep it all in view
  std::int64_t page_length_ = 0;
  std::int64_t heading_lines_ = 0;
  std::int64_t page_ = 0;  ///< the page begun last; 0 before the first
  std::int64_t lines_on_page_ = 0;
  std::optional<PageHeading> heading_;
  ByteBuffer buffer_;
  std::size_t used_ = 0;
  std::size_t line_start_ = 0;  ///< on a terminal: of the line laid out last
  int end_status_ = 0;
};

}  // namespace ptick
