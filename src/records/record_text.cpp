#include "records/record_text.h"

#include <algorithm>
#include <cerrno>
#include <span>
#include <utility>

#include "value/dynamic_array.h"

namespace ptick {

namespace {

bool EndsField(char c) { return c == '\n' || c == kFieldMark; }

}  // namespace

// A line end ends a field, so the last one makes no further field; a field mark separates two.
RecordText::RecordText(std::string text) : text_(std::move(text)) {
  for (std::size_t i = 0; i < text_.size(); ++i) {
    if (EndsField(text_[i])) {
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

std::optional<RecordText> ReadRecordText(RecordReader& record, const TextLimits& limits,
                                         int* error) {
  constexpr std::size_t kFirstRoom = std::size_t{16} * 1024;
  const auto refuse = [error](int reason) {
    if (error != nullptr) {
      *error = reason;
    }
    return std::nullopt;
  };
  std::string text;
  std::size_t used = 0;
  for (std::size_t fields = 0; fields <= limits.fields;) {
    if (used == text.size()) {
      text.resize(std::max(kFirstRoom, 2 * text.size()));
    }
    const std::span<char> room = std::span(text).subspan(used);
    const std::optional<std::size_t> size = record.Read(room);
    if (!size) {
      return refuse(record.Error());
    }
    if (*size == 0) {
      break;
    }
    const std::span<char> fresh = room.first(*size);
    fields += static_cast<std::size_t>(std::ranges::count_if(fresh, EndsField));
    used += *size;
    if (used > limits.bytes) {
      return refuse(EFBIG);
    }
  }
  text.resize(used);
  text.shrink_to_fit();
  return RecordText(std::move(text));
}

}  // namespace ptick
