#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include "generator/options.h"
#include "platform/platform.h"

namespace ptick::bench {

/// How many lines the benchmarks of the inner pieces work on.
inline constexpr std::uint32_t kBenchLines = 100'000;

/// A generated profile of kBenchLines lines. kBlockPadding readable bytes follow the text.
class BenchText {
 public:
  explicit BenchText(Records kind, TraceKeys keys = TraceKeys::kRandom, std::uint32_t file = 0);

  std::string_view Text() const { return std::string_view(padded_).substr(0, size_); }

  /// Calls `use` with every line, without its end.
  template <typename Use>
  void ForEachLine(Use use) const {
    const char* line = padded_.data();
    const char* const end = line + size_;
    while (line != end) {
      const auto* const line_end =
          static_cast<const char*>(std::memchr(line, '\n', static_cast<std::size_t>(end - line)));
      use(std::string_view(line, static_cast<std::size_t>(line_end - line)));
      line = line_end + 1;
    }
  }

 private:
  std::string padded_;
  std::size_t size_;
};

/// A record that holds `text`, which must outlive it.
std::unique_ptr<RecordReader> RecordOfText(std::string_view text);

}  // namespace ptick::bench
