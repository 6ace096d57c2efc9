// The lines of several inputs, one after the other, checked.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "companion/inputs/input_lines.h"
#include "companion/inputs/input_opener.h"
#include "companion/progress.h"
#include "profile/merge/shared_merge.h"

namespace ptick::companion {

/// Gives the name of the next input; nothing at the end.
using NextName = std::function<std::optional<std::string>()>;

/// Each input is opened when its turn comes, and closed before the next one is. Where one cannot be
/// read, or has a record of an unknown type, that is Trouble. May be asked by any thread, one at a
/// time.
class CheckedBlocks final : public MergeSource {
 public:
  CheckedBlocks(NextName next_name, const InputOpener& open, Progress& progress,
                std::size_t block_size)
      : next_name_(std::move(next_name)),
        open_(open),
        progress_(progress),
        block_size_(block_size) {}

  /// The next block, valid until the next call; empty at the end of the last input.
  std::string_view Next();
  /// The same, for several threads.
  bool Begin(MergeText& text) override;

 private:
  template <typename NextBlock>
  std::string_view NextBy(const NextBlock& next_block);
  bool Open();

  NextName next_name_;
  const InputOpener& open_;
  Progress& progress_;
  std::size_t block_size_;
  std::optional<InputLines> lines_;  ///< of the input that is open
  std::uint64_t line_count_ = 0;     ///< in its blocks so far
};

}  // namespace ptick::companion
