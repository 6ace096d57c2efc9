#pragma once

#include <string>
#include <string_view>

#include "profile/merge/merged_keys.h"
#include "records/line_blocks.h"

namespace ptick {

/// The lines of a merged profile, in order of the first appearance of their keys. Those are lines
/// of a profile again.
class MergedLines final : public LineBlocks {
 public:
  explicit MergedLines(MergedKeys&& keys);

  std::string_view Next() override;

 private:
  MergedKeys keys_;
  MergedKeys::Walk walk_;
  std::string block_;
};

}  // namespace ptick
