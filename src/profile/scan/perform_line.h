#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "profile/scan/byte_masks.h"
#include "profile/scan/line_numbers.h"
#include "profile/scan/load_word.h"

namespace ptick {

/// How every line of a PERFORM begins that is written in the usual form.
inline constexpr std::string_view kPerformStart = "PROFILE:perform\t";

/// A perform line that is written the way profiled processes write them: single TABs, pairs of a
/// known key and a value, at last "cmd" and a command that goes to the end of the line. Values are
/// ordinary numbers below 2^31, that of "type" is a short text. No byte of the line is a value
/// mark, a line end or, in a value or the command, a control byte below 11.
struct PerformLine {
  /// In the order of the keys "startclock", "endclock", "starttime", "endtime", "ticks", "usrcpu"
  /// and "syscpu"; kNoOrdinaryNumber where the line does not say it.
  std::array<std::uint32_t, 7> numbers;
  std::string_view type;     ///< empty where the line does not say it
  std::string_view command;  ///< never empty, without the mark of a shell command
  const char* next;          ///< the start of the next line
};

namespace perform_line {

inline constexpr char kListMark = static_cast<char>(253);     // a value mark
inline constexpr char kCommandMark = static_cast<char>(255);  // before the command of a shell

/// A key and the TAB after it, as the words that they are compared by.
class Key {
 public:
  explicit constexpr Key(std::string_view name) : size_(name.size() + 1) {
    const auto byte = [&](std::size_t i) -> std::uint64_t {
      return static_cast<unsigned char>(i < name.size() ? name[i] : '\t');
    };
    for (std::size_t i = 0; i < 8 && i < size_; ++i) {
      first_ |= byte(i) << (8 * i);
      mask_ |= std::uint64_t{0xFF} << (8 * i);
    }
    for (std::size_t i = 0; i < 8 && size_ > 8; ++i) {
      last_ |= byte(size_ - 8 + i) << (8 * i);
    }
  }

  bool IsAt(const char* text) const {
    return (LoadWord(text) & mask_) == first_ &&
           (size_ <= 8 || LoadWord(text + size_ - 8) == last_);
  }

  /// With the TAB.
  std::size_t Size() const { return size_; }

 private:
  std::size_t size_;
  std::uint64_t first_ = 0;  ///< the first 8 bytes, or all of them
  std::uint64_t mask_ = 0;
  std::uint64_t last_ = 0;  ///< the last 8 bytes of a longer one
};

inline constexpr std::array<Key, 9> kKeys = {Key("startclock"), Key("endclock"), Key("starttime"),
                                             Key("endtime"),    Key("ticks"),    Key("usrcpu"),
                                             Key("syscpu"),     Key("type"),     Key("cmd")};
inline constexpr std::size_t kType = 7;
inline constexpr std::size_t kCommand = 8;

/// The key at `text`, most likely `expected`; kKeys.size() for any other text.
inline std::size_t KeyAt(const char* text, std::size_t expected) {
  if (kKeys[expected].IsAt(text)) {
    return expected;
  }
  std::size_t key = 0;
  while (key < kKeys.size() && !kKeys[key].IsAt(text)) {
    ++key;
  }
  return key;
}

/// The size of the text at `text` that a TAB ends; 0 where it is not in the usual form.
inline std::size_t ReadShortText(const char* text, std::string_view& found) {
  const ByteMasks<16> masks(text);
  const std::uint64_t ends = masks.AtMost(10) | masks.Equal(kListMark) | std::uint64_t{1} << 16U;
  found = {text, static_cast<std::size_t>(std::countr_zero(ends))};
  return text[found.size()] == '\t' ? found.size() : 0;
}

/// The command at `text`, to the end of the line; empty when it is not in the usual form.
inline std::string_view CommandAt(const char* text) {
  if (*text == kCommandMark) {
    const auto dropped = static_cast<unsigned char>(text[1]);
    if (dropped < 11 || dropped >= 253) {
      return {};
    }
    text += 2;
  }
  for (const char* at = text;; at += 64) {
    const ByteMasks<64> masks(at);
    if (const std::uint64_t odd = masks.AtMost(10) | masks.Equal(kListMark); odd != 0) {
      const char* const end = at + std::countr_zero(odd);
      return *end == '\n' ? std::string_view(text, static_cast<std::size_t>(end - text))
                          : std::string_view();
    }
  }
}

}  // namespace perform_line

/// Takes apart the line that starts at `line` with kPerformStart. The text ends with LF, with
/// kBlockPadding readable bytes after it. False, and `perform` is anything, for a line in another
/// form, which is left to those who know all rules.
inline bool ScanPerformLine(const char* line, PerformLine& perform) {
  using namespace perform_line;  // NOLINT(*-using-namespace)
  constexpr int kMaxPairs = 32;
  perform.numbers.fill(kNoOrdinaryNumber);
  perform.type = {};
  const char* at = line + kPerformStart.size();
  std::size_t expected = 0;
  for (int pair = 0; pair < kMaxPairs; ++pair) {
    const std::size_t key = KeyAt(at, expected);
    if (key == kKeys.size()) {
      return false;
    }
    at += kKeys[key].Size();
    if (key == kCommand) {
      perform.command = CommandAt(at);
      if (perform.command.empty()) {
        return false;  // it has no place, and nothing follows it
      }
      perform.next = perform.command.data() + perform.command.size() + 1;
      return true;
    }
    const std::size_t size =
        key == kType ? ReadShortText(at, perform.type) : ReadNumber(at, perform.numbers[key]);
    if (size == 0) {
      return false;
    }
    at += size + 1;
    expected = key + 1;
  }
  return false;
}

}  // namespace ptick
