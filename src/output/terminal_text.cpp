#include "output/terminal_text.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "output/character_width.h"
#include "output/utf8.h"

namespace ptick {

namespace {

struct Range {
  char32_t first;
  char32_t last;
};

constexpr std::array<Range, 8> kHarmful = {{
    {0x00, 0x08},
    {0x0B, 0x1F},
    {0x7F, 0x9F},
    {0x200B, 0x200F},    // no width, joiners, marks of direction
    {0x2028, 0x202E},    // line and paragraph ends, embeddings and overrides of direction
    {0x2060, 0x2069},    // no width, isolates of direction
    {0xFEFF, 0xFEFF},    // no width
    {0xE0000, 0xE007F},  // tags: text that is not shown
}};

bool IsHarmful(char32_t code) {
  return std::ranges::any_of(
      kHarmful, [code](const Range& range) { return code >= range.first && code <= range.last; });
}

bool IsHarmful(const DecodedCharacter& character, char first_byte) {
  // A byte alone is judged by what a terminal that reads single bytes takes it for.
  return IsHarmful(character.code.value_or(static_cast<unsigned char>(first_byte)));
}

bool IsPrintableAscii(char c) { return c >= ' ' && c < 0x7F; }

/// The place where a terminal writes next, and the rows it has gone through.
class Pen {
 public:
  explicit Pen(std::int64_t columns) : columns_(columns) {}

  std::int64_t Rows() const { return rows_; }

  void EndLine() {
    ++rows_;
    column_ = 0;
  }

  /// To the next stop, or the last column: a TAB never leaves the row.
  void Tab() {
    constexpr std::int64_t kTabWidth = 8;
    if (column_ < columns_) {
      column_ = std::min((column_ / kTabWidth + 1) * kTabWidth, columns_ - 1);
    }
  }

  /// A row that is just full is left only when another character comes.
  void Write(std::int64_t width) {
    if (column_ + width > columns_ && width > 0 && column_ > 0) {
      EndLine();
    }
    column_ = std::min(column_ + width, columns_);
  }

 private:
  std::int64_t columns_;
  std::int64_t rows_ = 1;
  std::int64_t column_ = 0;
};

}  // namespace

std::size_t MakeHarmless(std::span<char> text) {
  const std::string_view all(text.data(), text.size());
  char* end = text.data();
  for (std::size_t at = 0; at < all.size();) {
    if (IsPrintableAscii(all[at])) {
      *end++ = all[at++];
      continue;
    }
    const DecodedCharacter character = DecodeCharacter(all.substr(at));
    if (IsHarmful(character, all[at])) {
      *end++ = '?';
    } else {
      std::memmove(end, all.data() + at, character.size);
      end += character.size;
    }
    at += character.size;
  }
  return static_cast<std::size_t>(end - text.data());
}

void MakeHarmless(std::string& text) { text.resize(MakeHarmless(std::span<char>(text))); }

std::int64_t CountRows(std::string_view line, std::int64_t columns) {
  Pen pen(columns);
  for (std::size_t at = 0; at < line.size();) {
    const DecodedCharacter character = DecodeCharacter(line.substr(at));
    at += character.size;
    if (character.code == U'\n') {
      pen.EndLine();
    } else if (character.code == U'\t') {
      pen.Tab();
    } else {
      pen.Write(character.code ? CharacterWidth(*character.code) : 1);
    }
  }
  return pen.Rows();
}

}  // namespace ptick
