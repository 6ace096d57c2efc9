#include "reports/fitted_texts.h"

#include <algorithm>

namespace ptick {

FittedTexts::FittedTexts(std::int64_t width)
    : width_(static_cast<std::size_t>(std::max<std::int64_t>(width, 0))) {}

void FittedTexts::Begin() {
  ends_.push_back(bytes_.size());
  room_ = width_;
  blank_waits_ = false;
}

void FittedTexts::Append(std::string_view piece) {
  for (const char c : piece) {
    if (room_ == 0) {
      break;
    }
    if (c == ' ' || c == '\t') {
      blank_waits_ = room_ < width_;
      continue;
    }
    if (blank_waits_) {
      if (room_ == 1) {  // it would be the last byte shown
        room_ = 0;
        break;
      }
      bytes_ += ' ';
      --room_;
      blank_waits_ = false;
    }
    bytes_ += c;
    --room_;
  }
  ends_.back() = bytes_.size();
}

void FittedTexts::CutTo(std::size_t count) {
  if (count < ends_.size()) {
    bytes_.resize(BeginOf(count));
    ends_.resize(count);
  }
}

}  // namespace ptick
