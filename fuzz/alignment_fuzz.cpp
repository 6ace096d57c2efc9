// Two texts of any lines, aligned: what is joined is equal, in order, and joined both ways; short
// texts have as many joined lines as can be.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "compare/alignment.h"
#include "fuzz/fuzz_input.h"
#include "fuzz/require.h"

namespace {

using Lines = std::vector<std::string_view>;
using ptick::compare::Alignment;
using ptick::fuzz::Require;

// One line a byte, so that lines are often alike.
Lines LinesOf(const std::string& text) {
  Lines lines;
  for (std::size_t n = 0; n < text.size(); ++n) {
    lines.push_back(std::string_view(text).substr(n, 1));
  }
  return lines;
}

// Many lines: the text over and over, a little shorter each time.
Lines Repeated(const std::string& text, int times) {
  Lines lines = LinesOf(text);
  for (int n = 1; n < times && !text.empty(); ++n) {
    const Lines more = LinesOf(text);
    lines.insert(lines.end(), more.begin() + n % static_cast<int>(more.size()), more.end());
  }
  return lines;
}

std::size_t LongestCommon(const Lines& a, const Lines& b) {
  std::vector<std::size_t> row(b.size() + 1);
  for (const std::string_view line : a) {
    std::size_t diagonal = 0;
    for (std::size_t n = 0; n < b.size(); ++n) {
      const std::size_t above = row[n + 1];
      row[n + 1] = line == b[n] ? diagonal + 1 : std::max(above, row[n]);
      diagonal = above;
    }
  }
  return row.back();
}

std::size_t Check(const Lines& old_lines, const Lines& new_lines) {
  const Alignment alignment = ptick::compare::AlignLines(old_lines, new_lines);
  Require(alignment.new_of_old.size() == old_lines.size(), "each old line has a place");
  Require(alignment.old_of_new.size() == new_lines.size(), "each new line has a place");
  std::size_t joined = 0;
  std::size_t next = 0;
  for (std::size_t line = 0; line < old_lines.size(); ++line) {
    const std::size_t twin = alignment.new_of_old[line];
    if (twin == Alignment::kNone) {
      continue;
    }
    Require(twin >= next && twin < new_lines.size(), "lines are in order");
    Require(old_lines[line] == new_lines[twin], "joined lines are equal");
    Require(alignment.old_of_new[twin] == line, "a line leads back");
    next = twin + 1;
    ++joined;
  }
  const auto back = new_lines.size() - static_cast<std::size_t>(std::ranges::count(
                                           alignment.old_of_new, Alignment::kNone));
  Require(back == joined, "as many lines lead back");
  return joined;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ptick::fuzz::FuzzInput input(data, size);
  const int times = input.TakeBetween(1, 200);
  const std::string old_text = input.TakeUpTo('\0').substr(0, 400);
  const std::string new_text = input.TakeRest().substr(0, 400);
  const Lines old_lines = LinesOf(old_text);
  const Lines new_lines = LinesOf(new_text);
  Require(Check(old_lines, new_lines) == LongestCommon(old_lines, new_lines),
          "as many lines are joined as can be");
  Check(Repeated(old_text, times), Repeated(new_text, times / 2 + 1));
  return 0;
}
