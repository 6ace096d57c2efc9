#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "output/output.h"
#include "platform/platform.h"
#include "profile/merge/merge_keys.h"
#include "profile/merge/merge_line.h"
#include "profile/merge/merge_values.h"
#include "records/line_blocks.h"

namespace ptick {

/// Several profiles merged into one. A line's key is all of it but its last TAB-separated field,
/// its value is that field; lines of equal keys become one, in order of first appearance. The
/// merged lines are handed out as blocks; memory follows the distinct keys, not the lines.
class ProfileMerge final : public LineBlocks {
 public:
  /// Takes in the lines of a block as LineBlocks hands them out. Lines without a TAB or without the
  /// prefix "PROFILE:" are passed over.
  void AddLines(std::string_view block);

  bool Empty() const { return keys_.size() == 0; }

  /// The name of the first profile that could be read.
  const std::string& FirstName() const { return first_name_; }
  /// Notes that the profile of that name has been read.
  void NoteName(std::string_view name) {
    if (first_name_.empty()) {
      first_name_ = name;
    }
  }

  std::string_view Next() override;

 private:
  /// A trace line whose key is being looked up.
  struct WaitingLine {
    MergeKeys::Lookup key;
    std::uint32_t ticks;
  };

  void AddTraces(std::span<WaitingLine> lines);
  void AddOther(std::string_view line);
  void Combine(MergeKeys::Id key, const MergeLine& line);

  MergeKeys keys_;
  MergeValues values_{keys_};
  MergeKeys::Id next_key_ = 0;  ///< the key behind that of the line before
  std::string first_name_;
  MergeKeys::Id handed_out_ = 0;  ///< keys whose lines have been handed out
  std::string block_;
};

/// Merges the files of these names, in order. A file that cannot be opened or read is passed over
/// after message 201 or 202; when nothing was merged prints "No input files..." and throws Stop
/// with status 2. A file whose reading breaks off midway cannot be taken out of the sums again:
/// that is message 202 and Stop with status 1.
void MergeProfileFiles(const std::vector<std::string>& names, Platform& platform, Output& output,
                       ProfileMerge& merge);

}  // namespace ptick
