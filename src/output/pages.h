#pragma once

#include <cstdint>
#include <string_view>

#include "output/output_buffer.h"
#include "output/page_heading.h"
#include "platform/console.h"

namespace ptick {

/// The pages of a report on a terminal. Each is as long as the terminal, starts with the heading
/// and waits for a key when there is a keyboard. Without a heading nothing is paged. The keys:
/// Return and blank for the next page, `c` to go on without waiting, `q`, as the end of the input,
/// to end the run, which throws Stop with kSuccess. Others are passed over.
class Pages {
 public:
  Pages(Console& console, OutputBuffer& buffer, PageHeading heading);

  /// Prints a line on this page or the next. The line is harmless (terminal_text.h).
  void PrintLine(std::string_view line);

  /// Prints the heading when no line has been.
  void Finish();

  /// Ends the last line.
  void Close();

 private:
  void StartPage();
  void WaitForKey();

  Console& console_;
  OutputBuffer& buffer_;
  PageHeading heading_;
  bool waits_;                  ///< a full page waits for a key
  bool line_end_held_ = false;  ///< a full page's last line end is held back to keep it all in view
  std::int64_t page_length_;
  std::int64_t page_ = 0;  ///< the page begun last; 0 before the first
  std::int64_t lines_on_page_ = 0;
};

}  // namespace ptick
