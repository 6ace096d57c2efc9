#include "output/output.h"

#include <algorithm>
#include <utility>

#include "output/terminal_text.h"

namespace ptick {

Output::Output(Console& console, std::string_view program)
    : console_(console),
      diagnostics_(console, program),
      buffer_(console, diagnostics_),
      on_terminal_(console.IsTerminal(Stream::kOutput)),
      begin_line_needed_(on_terminal_) {
  if (on_terminal_) {
    pages_.emplace(console_, buffer_);
  }
}

void Output::SetHeading(PageHeading heading) {
  if (on_terminal_) {
    pages_->SetHeading(std::move(heading));
  } else {
    heading_ = std::move(heading);
    begin_line_needed_ = true;
  }
}

void Output::PrintLine(std::string_view line) {
  EndLineAt(std::ranges::copy(line, LineRoom(line.size())).out);
}

void Output::PrintLines(std::string_view lines) {
  PrintHeading();
  begin_line_needed_ = false;
  buffer_.AppendMuch(lines);
}

// On a terminal for every line; elsewhere for the first below a heading, and where room is short.
char* Output::BeginLine(std::size_t most) {
  if (on_terminal_) {
    if (terminal_line_.size() < most) {
      terminal_line_.Grow(most, 0);
    }
    return terminal_line_.data();
  }
  PrintHeading();
  buffer_.Reserve(most + 1);
  begin_line_needed_ = false;
  return buffer_.End();
}

void Output::EndTerminalLine(char* end) {
  const std::size_t size = MakeHarmless({terminal_line_.data(), end});
  pages_->PrintLine({terminal_line_.data(), size});
}

void Output::PrintHeading() {
  if (heading_) {
    buffer_.Append(HeadingText(*heading_, 1));
    buffer_.Append("\n");
    heading_.reset();
  }
}

bool Output::PrintTerminal(std::string_view line) {
  buffer_.Flush();
  const bool written = diagnostics_.PrintLine(line);
  if (pages_ && console_.IsTerminal(Stream::kDiagnostics)) {
    pages_->CountLine(line);
  }
  return written;
}

void Output::PrintMessage(std::string_view text) {
  buffer_.Flush();
  diagnostics_.PrintMessage(text);
}

void Output::Finish() {
  PrintHeading();
  if (pages_) {
    pages_->Finish();
  }
  Close();
}

void Output::Close() { buffer_.Flush(); }

}  // namespace ptick
