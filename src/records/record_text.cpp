#include "records/record_text.h"

#include <algorithm>
#include <span>
#include <utility>

#include "value/dynamic_array.h"

namespace ptick {

// A line end ends a field, so the last one makes no further field; a field mark separates two.
RecordText::RecordText(std::string text) : text_(std::move(text)) {
  for (std::size_t i = 0; i < text_.size(); ++i) {
    if (text_[i] == '\n' || text_[i] == kFieldMark) {
      ends_.push_back(i);
    }
  }
  if (!text_.empty() && text_.back() != '\n') {
    ends_.push_back(text_.size());
  }
}

std::optional<std::string_view> RecordText::ReadField(std::size_t n) const {
  if (n == 0 || n > ends_.size()) {
    return std::nullopt;
  }
  const std::size_t begin = n == 1 ? 0 : ends_[n - 2] + 1;
  return std::string_view(text_).substr(begin, ends_[n - 1] - begin);
}

std::optional<RecordText> ReadRecordText(RecordReader& record, int* error) {
  constexpr std::size_t kFirstRoom = std::size_t{16} * 1024;
  std::string text;
  std::size_t used = 0;
  for (;;) {
    if (used == text.size()) {
      text.resize(std::max(kFirstRoom, 2 * text.size()));
    }
    const std::optional<std::size_t> size = record.Read(std::span(text).subspan(used));
    if (!size) {
      if (error != nullptr) {
        *error = record.Error();
      }
      return std::nullopt;
    }
    if (*size == 0) {
      break;
    }
    used += *size;
  }
  text.resize(used);
  text.shrink_to_fit();
  return RecordText(std::move(text));
}

}  // namespace ptick
