#include "ptick_merge/careful_merge.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>

#include "profile/parse/unknown_record.h"
#include "records/line_blocks.h"

namespace ptick::companion {

namespace {

// About what a key takes with its value and its places in the index.
constexpr std::size_t kBytesPerKey = 16;

}  // namespace

std::optional<Problem> CarefulMerge::Take(InputLines& lines) {
  waiting_.clear();
  is_kept_ = false;
  try {
    TakeLines(lines);
  } catch (const Trouble& trouble) {
    if (is_kept_) {
      merge_ = *before_;
    }
    return trouble.What();
  }
  AddWaiting();
  return std::nullopt;
}

void CarefulMerge::TakeLines(InputLines& lines) {
  std::uint64_t count = 0;
  for (std::string_view block = lines.Next(); !block.empty(); block = lines.Next()) {
    if (FindUnknownRecord(block, count)) {
      throw lines.UnknownRecordIn(block, count + 1);
    }
    TakeBlock(block);
  }
}

void CarefulMerge::TakeBlock(std::string_view block) {
  if (is_kept_) {
    merge_.AddLines(block);
    return;
  }
  if (waiting_.size() + block.size() > std::max(least_room_, kBytesPerKey * merge_.KeyCount())) {
    before_ = merge_;
    is_kept_ = true;
    AddWaiting();
    merge_.AddLines(block);
    return;
  }
  waiting_ += block;
}

void CarefulMerge::AddWaiting() {
  const std::size_t size = waiting_.size();
  waiting_.append(kBlockPadding, '\0');
  merge_.AddLines(std::string_view(waiting_).substr(0, size));
  waiting_.clear();
}

}  // namespace ptick::companion
