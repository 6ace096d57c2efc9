#include "companion/text_writer.h"

#include <algorithm>

#include "companion/display_width.h"
#include "companion/utf8.h"

namespace ptick::companion {

namespace {

constexpr std::size_t kTabStop = 8;

// How much of a line, TABs included, fits in so many columns.
std::size_t FittingBytes(std::string_view line, std::size_t columns) {
  std::size_t used = 0;
  std::size_t begin = 0;
  while (true) {
    const std::size_t end = std::min(line.find('\t', begin), line.size());
    const std::string_view piece = line.substr(begin, end - begin);
    const std::string_view part = FittingPart(piece, columns - used);
    if (part.size() < piece.size() || end == line.size()) {
      return begin + part.size();
    }
    used += DisplayWidth(part);
    used += kTabStop - used % kTabStop;
    if (used > columns) {
      return end;
    }
    begin = end + 1;
  }
}

}  // namespace

std::string TextWriter::Shown(std::string_view text, TextPlace place) const {
  std::string utf8 = ToUtf8(text);
  return form_.to_terminal ? TerminalText(utf8, place) : utf8;
}

TextWriter& TextWriter::Add(std::string_view text, Style style) {
  line_ += Shown(text, TextPlace::kLine);
  runs_.push_back({.end = line_.size(), .style = style});
  return *this;
}

TextWriter& TextWriter::Blanks(std::size_t count) {
  line_.append(count, ' ');
  runs_.push_back({.end = line_.size(), .style = Style::kPlain});
  return *this;
}

void TextWriter::EndLine() {
  const std::size_t columns = form_.columns.value_or(0);
  if (columns == 0 || FittingBytes(line_, columns) == line_.size()) {
    WriteRuns(line_.size());
  } else {
    WriteRuns(FittingBytes(line_, columns - 1));
    Write(">", Style::kFaint);
  }
  sink_.Write("\n");
  line_.clear();
  runs_.clear();
}

void TextWriter::WriteRuns(std::size_t end) {
  std::size_t begin = 0;
  for (const Run& run : runs_) {
    const std::size_t stop = std::min(run.end, end);
    if (begin < stop) {
      Write(std::string_view(line_).substr(begin, stop - begin), run.style);
      begin = stop;
    }
  }
}

void TextWriter::Write(std::string_view text, Style style) {
  if (form_.has_color && style != Style::kPlain) {
    sink_.WriteControl(StyleSequence(style));
    sink_.Write(text);
    sink_.WriteControl(kPlainSequence);
  } else {
    sink_.Write(text);
  }
}

}  // namespace ptick::companion
