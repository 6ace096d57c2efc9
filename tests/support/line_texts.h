#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "records/line_finder.h"

namespace ptick::testing {

/// Keeps the lines that were found, whole.
class LineTexts final : public LineSink {
 public:
  void Take(std::size_t n, std::string_view piece) override {
    if (n == texts.size()) {
      texts.emplace_back();
    }
    texts.at(n) += piece;
    in_order = in_order && n + 1 == texts.size();
  }
  void Forget(std::size_t n) override { texts.resize(n < texts.size() ? n : texts.size()); }

  std::vector<std::string> texts;
  bool in_order = true;  ///< whether only the last line was ever continued
};

}  // namespace ptick::testing
