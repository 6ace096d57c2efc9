// Writes text for people, line by line: in styles, safe on a terminal, cut to its width there.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "companion/byte_sink.h"
#include "companion/terminal_text.h"
#include "companion/text_form.h"

namespace ptick::companion {

/// Builds a line piece by piece, then writes it.
///
/// Texts are bytes of any kind and become UTF-8. Where lines are cut, a '>' in the last column
/// says so.
class TextWriter {
 public:
  TextWriter(ByteSink& sink, TextForm form) : sink_(sink), form_(form) {}

  const TextForm& Form() const { return form_; }

  /// Adds a piece to the line.
  TextWriter& Add(std::string_view text, Style style = Style::kPlain);
  /// Adds blanks.
  TextWriter& Blanks(std::size_t count);
  /// Writes the line.
  void EndLine();

  /// Writes a whole line.
  void Line(std::string_view text, Style style = Style::kPlain) { Add(text, style).EndLine(); }

  /// A text as it shows in this form, but for its length: UTF-8, and safe where that counts.
  std::string Shown(std::string_view text, TextPlace place) const;

 private:
  /// A part of the line in one style, up to a place in it.
  struct Run {
    std::size_t end;
    Style style;
  };

  void Write(std::string_view text, Style style);
  void WriteRuns(std::size_t end);

  ByteSink& sink_;
  TextForm form_;
  std::string line_;
  std::vector<Run> runs_;
};

}  // namespace ptick::companion
