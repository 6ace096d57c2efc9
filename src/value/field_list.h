#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "value/growing_text.h"

namespace ptick {

/// A list of texts, one after another in one block of memory: append, read, nothing else. An empty
/// element is an element. Views stay valid until the next Append.
class FieldList {
 public:
  void Append(std::string_view text) {
    bytes_.Append(text);
    ends_.push_back(bytes_.size());
  }

  std::size_t size() const { return ends_.size(); }
  bool empty() const { return ends_.empty(); }

  /// Element `index`, counted from 0.
  std::string_view operator[](std::size_t index) const {
    const std::size_t begin = index == 0 ? 0 : ends_[index - 1];
    return {bytes_.data() + begin, ends_[index] - begin};
  }

 private:
  GrowingText bytes_;
  std::vector<std::size_t> ends_;
};

}  // namespace ptick
