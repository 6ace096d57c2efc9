#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ptick {

/// Source texts as a column of a report shows them: TABs are blanks, no blanks at the ends, inner
/// runs of blanks cut to one; then the first bytes, as many as the column is wide, without a
/// trailing blank. Only what is shown is kept.
class FittedTexts {
 public:
  /// A width of zero or less leaves nothing of a text.
  explicit FittedTexts(std::int64_t width);

  /// Makes room for the ends of that many texts.
  void Reserve(std::size_t count) { ends_.reserve(count); }

  /// Begins a further text, which is empty.
  void Begin();

  /// Continues the text begun last.
  void Append(std::string_view piece);

  /// Forgets all texts but the first `count`.
  void CutTo(std::size_t count);

  std::size_t size() const { return ends_.size(); }

  /// Text `n`, counted from 0; valid until the next change.
  std::string_view operator[](std::size_t n) const {
    const std::size_t begin = BeginOf(n);
    return std::string_view(bytes_).substr(begin, ends_[n] - begin);
  }

 private:
  std::size_t BeginOf(std::size_t n) const { return n == 0 ? 0 : ends_[n - 1]; }

  std::size_t width_;
  std::string bytes_;
  std::vector<std::size_t> ends_;

  // The text begun last:
  std::size_t room_ = 0;      ///< how many bytes more are shown of it
  bool blank_waits_ = false;  ///< a blank is shown before the next byte that is none
};

}  // namespace ptick
