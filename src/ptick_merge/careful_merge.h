// A merge that takes each input whole or not at all.
#pragma once

#include <cstddef>
#include <memory_resource>
#include <optional>
#include <string>

#include "companion/inputs/input_lines.h"
#include "companion/problem.h"
#include "profile/merge/profile_merge.h"

namespace ptick::companion {

/// What is wrong with an input shows at its end at the latest, and a pipe cannot be read twice. So
/// the lines of an input wait until all of it is known to be good; from the place on where they are
/// more than the keys of the merge take themselves, the merge is kept as it was before, and goes
/// back to that. Memory follows the distinct keys, time the bytes read, however many inputs turn
/// out bad.
class CarefulMerge {
 public:
  /// Tables take their memory from `memory`, which must outlive this and the merge taken from it.
  /// Lines wait up to `least_room` bytes in any case.
  explicit CarefulMerge(std::pmr::memory_resource* memory,
                        std::size_t least_room = std::size_t{1} << 20U)
      : merge_(memory), least_room_(least_room) {}

  /// Takes in an input. Returns what is wrong with it; nothing of it has been taken then.
  std::optional<Problem> Take(InputLines& lines);

  /// The merge; nothing is left here.
  ProfileMerge TakeMerge() { return std::move(merge_); }

 private:
  void TakeLines(InputLines& lines);
  void TakeBlock(std::string_view block);
  void AddWaiting();

  ProfileMerge merge_;
  std::size_t least_room_;
  /// Lines of the input that is being read.
  std::string waiting_;
  /// The merge before that input; used where its lines do not wait any more.
  std::optional<ProfileMerge> before_;
  bool is_kept_ = false;
};

}  // namespace ptick::companion
