#include "companion/inputs/checked_blocks.h"

#include "companion/problem.h"
#include "profile/parse/unknown_record.h"

namespace ptick::companion {

std::string_view CheckedBlocks::Next() {
  return NextBy([this] { return lines_->Next(); });
}

bool CheckedBlocks::Begin(MergeText& text) {
  text.block = NextBy([this, &text] { return lines_->NextInto(text.memory); });
  text.size = text.block.size();
  return !text.block.empty();
}

template <typename NextBlock>
std::string_view CheckedBlocks::NextBy(const NextBlock& next_block) {
  while (lines_ || Open()) {
    const std::string_view block = next_block();
    if (block.empty()) {
      lines_.reset();
      continue;
    }
    if (FindUnknownRecord(block, line_count_)) {
      throw lines_->UnknownRecordIn(block, line_count_ + 1);
    }
    return block;
  }
  return {};
}

bool CheckedBlocks::Open() {
  const std::optional<std::string> name = next_name_();
  if (name) {
    lines_.emplace(open_(*name), InputName(*name), progress_, block_size_);
    line_count_ = 0;
  }
  return name.has_value();
}

}  // namespace ptick::companion
