#include "profile/merge/merged_lines.h"

#include <cstddef>
#include <utility>

namespace ptick {

namespace {

constexpr std::size_t kBlockSize = std::size_t{256} * 1024;

}  // namespace

MergedLines::MergedLines(MergedKeys&& keys)
    : keys_(std::move(keys)), walk_(keys_, 0, keys_.LotCount()) {}

std::string_view MergedLines::Next() {
  block_.clear();
  while (block_.size() < kBlockSize) {
    const MergedKey key = walk_.Next();
    if (key.values == nullptr) {
      break;
    }
    key.AppendLine(block_);
  }
  const std::size_t size = block_.size();
  block_.append(kBlockPadding, '\0');
  return std::string_view(block_).substr(0, size);
}

}  // namespace ptick
