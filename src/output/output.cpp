#include "output/output.h"

#include <algorithm>
#include <system_error>

#include "output/stop.h"

namespace ptick {

namespace {

constexpr std::size_t kBufferSize = std::size_t{256} * 1024;

std::int64_t LinesOf(const PageHeading& heading) {
  return 2 + std::count(heading.title.begin(), heading.title.end(), '\n') +
         std::count(heading.columns.begin(), heading.columns.end(), '\n');
}

bool IsControl(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return (byte < 32 && c != '\n') || byte == 127;
}

std::string MessageText(int number, std::string_view name) {
  const std::string quoted = "'" + std::string(name) + "'";
  const std::string prefix = "ptick: [" + std::to_string(number) + "] ";
  switch (number) {
    case 201:
      return prefix + "cannot open file " + quoted;
    case 202:
      return prefix + "cannot read record " + quoted;
    default:
      return prefix + quoted;
  }
}

}  // namespace

Output::Output(Console& console)
    : console_(console),
      on_terminal_(console.IsTerminal(Stream::kOutput)),
      careful_(on_terminal_) {}

void Output::SetHeading(PageHeading heading) {
  heading_lines_ = LinesOf(heading);
  heading_ = std::move(heading);
  careful_ = true;
  if (on_terminal_) {
    page_length_ = std::max(console_.PageLength(), heading_lines_ + 1);
    waits_ = console_.HasKeyboard();
  }
}

void Output::PrintLine(std::string_view line) {
  char* room = LineRoom(line.size());
  EndLineAt(std::copy(line.begin(), line.end(), room));
}

// On a terminal every line is looked at; elsewhere only the first needs the heading in front of it.
void Output::BeginLine(std::size_t most) {
  if (heading_) {
    if (page_ == 0) {
      StartPage();
    } else if (on_terminal_ && lines_on_page_ >= page_length_) {
      if (waits_) {
        WaitForKey();
      }
      StartPage();
    }
  }
  Reserve(most + 1);
  line_start_ = used_;
  careful_ = on_terminal_;
}

void Output::EndTerminalLine() {
  ShowControlBytes(line_start_);
  ++lines_on_page_;
  if (heading_ && waits_ && lines_on_page_ >= page_length_) {
    line_end_held_ = true;
  } else {
    buffer_.data()[used_++] = '\n';
  }
}

void Output::StartPage() {
  ++page_;
  Append(heading_->title);
  Append(" Page ");
  Append(std::to_string(page_));
  Append("\n");
  Append(heading_->columns);
  Append("\n");
  lines_on_page_ = heading_lines_;
}

void Output::WaitForKey() {
  Flush();
  for (;;) {
    const std::optional<char> key = console_.ReadKey();
    if (!key || *key == 'q') {
      throw Stop{end_status_};
    }
    if (*key == 'c') {
      waits_ = false;
      break;
    }
    if (*key == ' ' || *key == '\r' || *key == '\n') {
      break;
    }
  }
  line_end_held_ = false;
  Append("\n");
}

bool Output::PrintTerminal(std::string_view line) {
  Flush();
  std::string shown;
  shown.reserve(line.size() + 1);  // a malformed line may be as long as a file
  shown += line;
  if (console_.IsTerminal(Stream::kDiagnostics)) {
    std::replace_if(shown.begin(), shown.end(), IsControl, '?');
  }
  shown += '\n';
  const int error = console_.Write(Stream::kDiagnostics, shown);
  return error == 0 || error == static_cast<int>(std::errc::broken_pipe);
}

void Output::PrintMessage(int number, std::string_view name) {
  PrintTerminal(MessageText(number, name));
}

void Output::Finish() {
  if (heading_ && page_ == 0) {
    StartPage();
  }
  Close();
}

void Output::Close() {
  if (line_end_held_) {
    line_end_held_ = false;
    Append("\n");
  }
  Flush();
}

void Output::Flush() {
  if (used_ == 0) {
    return;
  }
  const std::string_view bytes(buffer_.data(), used_);
  used_ = 0;
  const int error = console_.Write(Stream::kOutput, bytes);
  if (error == 0) {
    return;
  }
  if (error == static_cast<int>(std::errc::broken_pipe)) {
    throw Stop{end_status_};
  }
  PrintTerminal("ptick: cannot write: " + std::generic_category().message(error));
  throw Stop{1};
}

void Output::Append(std::string_view text) {
  Reserve(text.size());
  const std::size_t start = used_;
  std::copy(text.begin(), text.end(), buffer_.data() + used_);
  used_ += text.size();
  if (on_terminal_) {
    ShowControlBytes(start);
  }
}

void Output::ShowControlBytes(std::size_t from) {
  std::replace_if(buffer_.data() + from, buffer_.data() + used_, IsControl, '?');
}

void Output::Reserve(std::size_t size) {
  if (buffer_.size() - used_ >= size) {
    return;
  }
  Flush();
  if (buffer_.size() < size) {
    buffer_.Grow(std::max(size, kBufferSize), 0);
  }
}

}  // namespace ptick
