#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "profile/ticks/run_marks.h"
#include "profile/ticks/tick_table.h"

namespace ptick {

/// The trace entries that one of several threads takes from a profile, run by run: entries that
/// follow each other there and come to one thread are a run. Runs are numbered in the order of the
/// profile, from 1; each belongs to one part.
class TickPart {
 public:
  TickTable& Table() { return table_; }

  /// What was added since the last call is run `run`, whose number is above those before.
  void EndRun(std::uint32_t run);

 private:
  friend class TickJoin;

  /// How much there is at the end of a run, besides what the buckets hold.
  struct End {
    std::uint32_t run;
    std::size_t programs;
    std::size_t large;
    std::size_t irregular;
  };

  TickTable table_;
  RunMarks marks_;
  std::vector<End> ends_;  ///< of the runs that add something to one of these
};

/// Adds the entries of all parts to those of `table`, which come first, so that it is as if one
/// thread had added all, run by run. Memory is not copied but for the texts and entries that are
/// rare.
void JoinTicks(TickTable& table, std::vector<TickPart>&& parts);

}  // namespace ptick
