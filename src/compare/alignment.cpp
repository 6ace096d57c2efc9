#include "compare/alignment.h"

#include <algorithm>
#include <cstddef>

#include "compare/line_difference.h"
#include "compare/unique_lines.h"
#include "profile/ticks/name_table.h"

namespace ptick::compare {

namespace {

using Lines = std::vector<std::uint32_t>;

// Lines as numbers: equal lines have equal numbers.
struct Numbered {
  Lines old_lines;
  Lines new_lines;
  std::size_t distinct = 0;
};

Numbered Number(std::span<const std::string_view> old_lines,
                std::span<const std::string_view> new_lines) {
  NameTable texts;
  Numbered numbered;
  numbered.old_lines.reserve(old_lines.size());
  for (const std::string_view line : old_lines) {
    numbered.old_lines.push_back(texts.Intern(line));
  }
  numbered.new_lines.reserve(new_lines.size());
  for (const std::string_view line : new_lines) {
    numbered.new_lines.push_back(texts.Intern(line));
  }
  numbered.distinct = texts.size();
  return numbered;
}

// The lines of one text that the other has, too: no other can be aligned.
struct Shared {
  Lines lines;
  /// Where they are in the whole text.
  std::vector<std::uint32_t> places;
};

Shared SharedWith(const Lines& lines, const Lines& others, std::size_t distinct) {
  std::vector<bool> is_there(distinct);
  for (const std::uint32_t line : others) {
    is_there[line] = true;
  }
  Shared shared;
  for (std::uint32_t place = 0; place < lines.size(); ++place) {
    if (is_there[lines[place]]) {
      shared.lines.push_back(lines[place]);
      shared.places.push_back(place);
    }
  }
  return shared;
}

// Takes the problem apart until its pieces are small.
class Aligner {
 public:
  Aligner(const Shared& old_text, const Shared& new_text, Alignment& alignment)
      : old_(old_text), new_(new_text), alignment_(alignment) {}

  void Align() { AlignRange({0, 0}, {old_.lines.size(), new_.lines.size()}, 0); }

 private:
  // Where one is in both texts.
  struct Place {
    std::size_t old_line;
    std::size_t new_line;
  };

  // How many steps of the exact difference all pieces together may take; past that it is taken over
  // windows only. About a tenth of a second.
  static constexpr std::size_t kSteps = 2'000'000;
  // The largest piece that is compared as a whole: old lines times new lines.
  static constexpr std::size_t kMaxPiece = 1'000'000;
  static constexpr std::size_t kWindow = 160;
  // How often a piece is divided at lines that it has once.
  static constexpr int kMaxDivisions = 8;

  void AlignRange(Place begin, Place end, int divisions);
  void Divide(Place begin, Place end, int divisions);
  void AlignWindows(Place begin, Place end);
  void Compare(Place begin, Place end);

  std::span<const std::uint32_t> OldLines(Place begin, Place end) const {
    return std::span(old_.lines).subspan(begin.old_line, end.old_line - begin.old_line);
  }
  std::span<const std::uint32_t> NewLines(Place begin, Place end) const {
    return std::span(new_.lines).subspan(begin.new_line, end.new_line - begin.new_line);
  }
  bool IsEqual(Place place) const {
    return old_.lines[place.old_line] == new_.lines[place.new_line];
  }
  void Join(Place place) {
    const std::uint32_t old_line = old_.places[place.old_line];
    const std::uint32_t new_line = new_.places[place.new_line];
    alignment_.new_of_old[old_line] = new_line;
    alignment_.old_of_new[new_line] = old_line;
  }

  const Shared& old_;
  const Shared& new_;
  Alignment& alignment_;
  std::size_t steps_ = 0;
};

void Aligner::AlignRange(Place begin, Place end, int divisions) {
  while (begin.old_line < end.old_line && begin.new_line < end.new_line && IsEqual(begin)) {
    Join(begin);
    begin = {begin.old_line + 1, begin.new_line + 1};
  }
  while (begin.old_line < end.old_line && begin.new_line < end.new_line &&
         IsEqual({end.old_line - 1, end.new_line - 1})) {
    end = {end.old_line - 1, end.new_line - 1};
    Join(end);
  }
  const std::size_t old_lines = end.old_line - begin.old_line;
  const std::size_t new_lines = end.new_line - begin.new_line;
  if (old_lines == 0 || new_lines == 0) {
    return;
  }
  if (old_lines <= kMaxPiece / new_lines && steps_ < kSteps) {
    Compare(begin, end);
  } else if (divisions < kMaxDivisions) {
    Divide(begin, end, divisions);
  } else {
    AlignWindows(begin, end);
  }
}

void Aligner::Divide(Place begin, Place end, int divisions) {
  const std::vector<LinePair> anchors =
      CommonUniqueLines(OldLines(begin, end), NewLines(begin, end));
  if (anchors.empty()) {
    AlignWindows(begin, end);
    return;
  }
  Place at = begin;
  for (const LinePair& anchor : anchors) {
    const Place next = {begin.old_line + anchor.old_line, begin.new_line + anchor.new_line};
    AlignRange(at, next, divisions + 1);
    Join(next);
    at = {next.old_line + 1, next.new_line + 1};
  }
  AlignRange(at, end, divisions + 1);
}

// Of each window the first half counts, so that lines find each other that are not far apart.
void Aligner::AlignWindows(Place begin, Place end) {
  while (begin.old_line < end.old_line && begin.new_line < end.new_line) {
    const Place window_end = {std::min(end.old_line, begin.old_line + kWindow),
                              std::min(end.new_line, begin.new_line + kWindow)};
    const bool is_last = window_end.old_line == end.old_line && window_end.new_line == end.new_line;
    const std::size_t limit = is_last ? kWindow : kWindow / 2;
    const LineDifference difference =
        CompareLines(OldLines(begin, window_end), NewLines(begin, window_end), limit);
    for (const LinePair& pair : difference.common) {
      Join({begin.old_line + pair.old_line, begin.new_line + pair.new_line});
    }
    begin = {begin.old_line + difference.old_end, begin.new_line + difference.new_end};
  }
}

void Aligner::Compare(Place begin, Place end) {
  const LineDifference difference =
      CompareLines(OldLines(begin, end), NewLines(begin, end), kMaxPiece);
  steps_ += difference.steps;
  for (const LinePair& pair : difference.common) {
    Join({begin.old_line + pair.old_line, begin.new_line + pair.new_line});
  }
}

}  // namespace

Alignment AlignLines(std::span<const std::string_view> old_lines,
                     std::span<const std::string_view> new_lines) {
  Alignment alignment = {.new_of_old = Lines(old_lines.size(), Alignment::kNone),
                         .old_of_new = Lines(new_lines.size(), Alignment::kNone)};
  const Numbered numbered = Number(old_lines, new_lines);
  const Shared old_text = SharedWith(numbered.old_lines, numbered.new_lines, numbered.distinct);
  const Shared new_text = SharedWith(numbered.new_lines, numbered.old_lines, numbered.distinct);
  Aligner(old_text, new_text, alignment).Align();
  return alignment;
}

}  // namespace ptick::compare
