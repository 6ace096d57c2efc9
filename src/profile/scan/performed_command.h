#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "profile/scan/byte_masks.h"
#include "profile/scan/load_word.h"
#include "profile/scan/perform_line.h"

namespace ptick {

/// The command of a perform line, where nothing else of the line is wanted.
struct PerformCommand {
  std::string_view text;       ///< never empty, without the mark of a shell command
  const char* next = nullptr;  ///< the start of the next line; null for a line in another form
};

namespace perform_line {

/// Finds the command in a line that is looked at 64 bytes at a time: after the first field "cmd"
/// that is a key. Fields are told by the TABs around them: one of three letters that begins with
/// "c" is nearly always that key, and it is one when the TABs up to its end are odd in number.
class CommandSearch {
 public:
  /// Whether a TAB of these 64 bytes is next to another, or before the line's end.
  bool HasEmptyField(std::uint64_t tabs, std::uint64_t end) const {
    return ((tabs << 1U | tabs_before_ >> 63U) & (tabs | end)) != 0;
  }

  /// Looks for the key. False when there is reason to doubt.
  bool Look(const char* text, std::uint64_t tabs, std::uint64_t letters_c) {
    const std::uint64_t ends =
        tabs & (tabs << 4U | tabs_before_ >> 60U) & (letters_c << 3U | letters_before_ >> 61U);
    letters_before_ = letters_c;
    if (ends == 0) {
      is_odd_ ^= IsOdd(tabs);
      return ++blocks_ < kMaxBlocks;
    }
    command_ = text + std::countr_zero(ends) + 1;
    const bool is_key = is_odd_ ^ IsOdd(tabs & (ends ^ (ends - 1)));
    return is_key && (LoadWord(command_ - 4) & 0xFFFFFFU) == ('c' | 'm' << 8U | 'd' << 16U);
  }

  void GoOn(std::uint64_t tabs) { tabs_before_ = tabs; }

  /// Null until the key is found.
  const char* Command() const { return command_; }

 private:
  // Keys are read only at the beginning of a line, far beyond this.
  static constexpr int kMaxBlocks = 8;

  static bool IsOdd(std::uint64_t bits) { return __builtin_parityll(bits) != 0; }

  std::uint64_t tabs_before_ = std::uint64_t{1} << 63U;  ///< that of kPerformStart
  std::uint64_t letters_before_ = 0;
  bool is_odd_ = false;
  int blocks_ = 0;
  const char* command_ = nullptr;
};

/// The command that ends the line at `end`.
inline PerformCommand CommandBetween(const char* begin, const char* end) {
  if (begin == nullptr) {
    return {};
  }
  if (*begin == kCommandMark) {
    if (end - begin <= 2) {
      return {};
    }
    begin += 2;
  }
  return {{begin, static_cast<std::size_t>(end - begin)}, end + 1};
}

}  // namespace perform_line

/// Finds the command of the line that starts at `line` with kPerformStart. The line may hold other
/// keys than PerformLine may, and values of any kind but value marks. The text ends with LF, with
/// kBlockPadding readable bytes after it.
inline PerformCommand ScanPerformCommand(const char* line) {
  perform_line::CommandSearch search;
  for (const char* text = line + kPerformStart.size();; text += 64) {
    const ByteMasks<64> masks(text);
    const std::uint64_t line_ends = masks.Equal('\n');
    const std::uint64_t end = line_ends & (~line_ends + 1);
    const std::uint64_t tabs = masks.Equal('\t') & (end - 1);  // all of them where it does not end
    const bool has_list_mark = masks.Holds(perform_line::kListMark) &&
                               (masks.Equal(perform_line::kListMark) & (end - 1)) != 0;
    if (has_list_mark || search.HasEmptyField(tabs, end) ||
        (search.Command() == nullptr && !search.Look(text, tabs, masks.Equal('c')))) {
      return {};
    }
    if (end != 0) {
      return perform_line::CommandBetween(search.Command(), text + std::countr_zero(end));
    }
    search.GoOn(tabs);
  }
}

}  // namespace ptick
