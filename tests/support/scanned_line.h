#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "records/line_blocks.h"

namespace ptick::testing {

/// A line with its end, and after it no more readable bytes than a block has: `after`, repeated.
class ScannedLine {
 public:
  ScannedLine(std::string_view line, std::string_view after) : size_(line.size() + 1) {
    bytes_.assign(line.begin(), line.end());
    bytes_.push_back('\n');
    while (bytes_.size() < size_ + kBlockPadding) {
      bytes_.insert(bytes_.end(), after.begin(), after.end());
    }
    bytes_.resize(size_ + kBlockPadding);
    bytes_.shrink_to_fit();
  }

  const char* Begin() const { return bytes_.data(); }

  /// Where the next line starts.
  const char* Next() const { return bytes_.data() + size_; }

 private:
  std::vector<char> bytes_;
  std::size_t size_;
};

/// What may come after a line: whatever it is, it must not change what is made of the line.
inline const std::vector<std::string_view>& TextsAfter() {
  using std::string_view_literals::operator""sv;
  static const std::vector<std::string_view> texts = {"\0"sv,       "\t",
                                                      "\n",         "1",
                                                      "x",          "c",
                                                      "1\t2\n",     "PROFILE:trace\tX\t1\t2\n",
                                                      "\tcmd\tX\n", "PROFILE:perform\tcmd\tX\n",
                                                      "\xfd",       "\xff"};
  return texts;
}

}  // namespace ptick::testing
