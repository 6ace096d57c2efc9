#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory_resource>
#include <span>
#include <string_view>
#include <vector>

#include "parallel/thread_plan.h"
#include "profile/merge/merge_line.h"
#include "profile/merge/merge_values.h"
#include "profile/merge/merged_lines.h"
#include "profile/merge/shared_merge.h"

namespace ptick {

/// Collects profiles into one. A line's key is all of it but its last TAB-separated field, its
/// value is that field; lines of equal keys become one. Memory follows the distinct keys, not the
/// lines.
class ProfileMerge {
 public:
  /// The tables take their memory from `memory`, which must outlive this and its lines.
  explicit ProfileMerge(std::pmr::memory_resource* memory = std::pmr::get_default_resource())
      : memory_(memory), values_(memory) {}

  /// Takes in the lines of a block as LineBlocks hands them out. Lines without a TAB or without the
  /// prefix "PROFILE:" are passed over.
  void AddLines(std::string_view block);

  bool Empty() const { return KeyCount() == 0; }

  /// Takes in the lines of all blocks of `source`, on as many threads as `plan` says.
  /// Nothing is added after that.
  void AddBlocks(MergeSource& source, const ThreadPlan& plan);

  /// How many distinct keys there are.
  std::size_t KeyCount() const;

  /// The merged keys, or their lines; nothing is left here.
  MergedKeys TakeKeys();
  MergedLines TakeLines() { return MergedLines(TakeKeys()); }

 private:
  static constexpr std::size_t kBatch = 32;

  void AddWaiting();
  /// Adds lines that are no trace lines in the usual form, at least the first one before `end`.
  /// Returns the start of the line after the last of them.
  const char* AddOthers(const char* line, const char* end);
  void AddOthers(std::span<const MergeLine> lines);

  std::pmr::memory_resource* memory_;
  MergeValues values_;
  std::vector<MergePart> parts_;  ///< once several threads have merged; values_ is empty then
  MergeKeys::Id next_key_ = 0;    ///< the key after the one used last: the likeliest next one

  /// Trace lines whose keys are looked up together; the keys point into the block.
  std::array<MergeKey, kBatch> waiting_keys_;
  std::array<std::uint32_t, kBatch> waiting_ticks_{};
  std::size_t waiting_ = 0;
};

}  // namespace ptick
