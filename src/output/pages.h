#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "output/output_buffer.h"
#include "output/page_heading.h"
#include "platform/console.h"

namespace ptick {

/// The pages of a report on a terminal. A page takes as many rows as the terminal has when the page
/// begins, lines that are wider than the terminal taking several; it starts with the heading, if
/// there is one, and holds at least one line. All lines are whole.
///
/// Where keys can be asked for, a page leaves the last row to a prompt, which says the keys and is
/// shown when more is to come: Return and blank for the next page, `c` to go on without prompts,
/// `q`, as the end of the input, to end the run, which throws Stop with kSuccess.
class Pages {
 public:
  Pages(Console& console, OutputBuffer& buffer);

  /// Called before the first line.
  void SetHeading(PageHeading heading) { heading_ = std::move(heading); }

  /// Prints a harmless line (terminal_text.h) on this page or the next.
  void PrintLine(std::string_view line);

  /// Takes into account that a line has been printed on the page by other ways.
  void CountLine(std::string_view line);

  /// Prints the heading when no line has been.
  void Finish();

 private:
  bool HasRoomFor(std::string_view line) const;
  void StartPage();
  void Pause();

  Console& console_;
  OutputBuffer& buffer_;
  std::optional<PageHeading> heading_;
  bool pauses_;            ///< after each page
  TerminalSize size_;      ///< when the page began
  std::int64_t page_ = 0;  ///< the page begun last; 0 before the first
  std::int64_t rows_ = 0;  ///< taken on it
  bool has_line_ = false;  ///< on it, the heading aside
};

/// The prompt for a terminal of so many columns: as long as there is room for, the last column
/// being left free.
std::string_view PagePrompt(std::int64_t columns);

}  // namespace ptick
