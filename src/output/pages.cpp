#include "output/pages.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "output/stop.h"
#include "output/terminal_text.h"

namespace ptick {

namespace {

std::int64_t LinesOf(std::string_view text) { return std::ranges::count(text, '\n'); }

}  // namespace

Pages::Pages(Console& console, OutputBuffer& buffer, PageHeading heading)
    : console_(console),
      buffer_(buffer),
      heading_(std::move(heading)),
      waits_(console.HasKeyboard()),
      page_length_(std::max(console.PageLength(), LinesOf(HeadingText(heading_, 1)) + 1)) {}

void Pages::PrintLine(std::string_view line) {
  if (page_ == 0) {
    StartPage();
  } else if (lines_on_page_ >= page_length_) {
    if (waits_) {
      WaitForKey();
    }
    StartPage();
  }
  buffer_.Append(line);
  ++lines_on_page_;
  if (waits_ && lines_on_page_ >= page_length_) {
    line_end_held_ = true;
  } else {
    buffer_.Append("\n");
  }
}

void Pages::StartPage() {
  ++page_;
  std::string text = HeadingText(heading_, page_);
  MakeHarmless(text);
  buffer_.Append(text);
  lines_on_page_ = LinesOf(text);
}

void Pages::WaitForKey() {
  buffer_.Flush();
  for (;;) {
    const std::optional<char> key = console_.ReadKey();
    if (!key || *key == 'q') {
      throw Stop{kSuccess};
    }
    if (*key == 'c') {
      waits_ = false;
      break;
    }
    if (*key == ' ' || *key == '\r' || *key == '\n') {
      break;
    }
  }
  Close();
}

void Pages::Finish() {
  if (page_ == 0) {
    StartPage();
  }
}

void Pages::Close() {
  if (line_end_held_) {
    line_end_held_ = false;
    buffer_.Append("\n");
  }
}

}  // namespace ptick
