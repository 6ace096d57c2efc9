#include "output/pages.h"

#include <algorithm>
#include <array>
#include <string>

#include "output/stop.h"
#include "output/terminal_text.h"

namespace ptick {

namespace {

constexpr std::string_view kKeys = " \r\ncq";

constexpr std::array<std::string_view, 6> kPrompts = {"-- more: Return page, c continue, q quit --",
                                                      "Return page, c continue, q quit",
                                                      "-- Return, c, q --",
                                                      "Return, c, q",
                                                      ":",
                                                      ""};

}  // namespace

std::string_view PagePrompt(std::int64_t columns) {
  const auto* const fitting = std::ranges::find_if(kPrompts, [columns](std::string_view prompt) {
    return static_cast<std::int64_t>(prompt.size()) < columns;
  });
  return fitting == kPrompts.end() ? kPrompts.back() : *fitting;
}

Pages::Pages(Console& console, OutputBuffer& buffer)
    : console_(console), buffer_(buffer), pauses_(console.HasKeyboard()) {}

void Pages::PrintLine(std::string_view line) {
  if (page_ == 0) {
    StartPage();
  } else if (has_line_ && !HasRoomFor(line)) {
    if (pauses_) {
      Pause();
    }
    StartPage();
  }
  buffer_.Append(line);
  buffer_.Append("\n");
  rows_ += CountRows(line, size_.columns);
  has_line_ = true;
}

void Pages::CountLine(std::string_view line) {
  if (page_ > 0) {
    rows_ += CountRows(line, size_.columns);
  }
}

bool Pages::HasRoomFor(std::string_view line) const {
  const std::int64_t room = pauses_ ? size_.rows - 1 : size_.rows;
  return rows_ + CountRows(line, size_.columns) <= room;
}

void Pages::StartPage() {
  ++page_;
  size_ = console_.Size();
  rows_ = 0;
  has_line_ = false;
  if (heading_) {
    std::string text = HeadingText(*heading_, page_);
    MakeHarmless(text);
    buffer_.Append(text);
    buffer_.Append("\n");
    rows_ = CountRows(text, size_.columns);
  }
}

void Pages::Pause() {
  const TerminalSize size = console_.Size();
  // So many line ends lead to the last row from wherever the page began, and the page's first row
  // is then the first one on the terminal.
  for (; rows_ < size.rows - 1; ++rows_) {
    buffer_.Append("\n");
  }
  buffer_.Flush();
  const std::optional<char> key = console_.AskForKey(PagePrompt(size.columns), kKeys);
  if (!key || *key == 'q') {
    throw Stop{kSuccess};
  }
  pauses_ = *key != 'c';
}

void Pages::Finish() {
  if (heading_ && page_ == 0) {
    StartPage();
  }
}

}  // namespace ptick
