#pragma once

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/record_file.h"
#include "profile/merge/shared_merge.h"
#include "records/line_blocks.h"
#include "records/read_problem.h"
#include "records/record_range.h"

namespace ptick {

/// A profile to be merged.
struct MergeInput {
  const std::string* name;
  bool is_left_out = false;
  bool can_be_read_again = true;
};

/// The text of all inputs that are not left out, one input after the other. Those that cannot be
/// opened, or not read to their end, are told and left out from then on.
///
/// A big regular file comes in ranges, which several threads read at once. Before the next input is
/// opened they have been read: so problems come in the order of the inputs, and a pipe is not
/// opened in vain.
class MergeInputs final : public MergeSource {
 public:
  /// All must outlive this. Blocks and ranges are of about `block_size` bytes.
  MergeInputs(std::vector<MergeInput>& inputs, RecordFiles& files, const ProblemHandler& tell,
              std::size_t block_size)
      : inputs_(inputs), files_(files), tell_(tell), block_size_(block_size) {}

  /// The next block, valid until the next call; empty at the end, and when an input has failed in
  /// the middle. Not to be called after Begin.
  std::string_view Next();

  /// The same, for several threads.
  bool Begin(MergeText& text) override;
  void Read(MergeText& text) override;

  /// How many bytes are known to come of the input that the next block is of.
  std::uint64_t SizeAhead();

  /// Whether an input has failed after blocks of it were given. It is left out now.
  bool HasBrokenOff() const { return has_broken_off_; }

  /// Whether one of the inputs before that which has broken off cannot be read again.
  bool IsSpent() const;

  /// The name of the first input that was read; empty when none was.
  const std::string& FirstName() const { return first_name_; }

 private:
  class Reading;

  /// Why a range could not be read.
  struct Failure {
    std::uint64_t place;
    int error;
  };

  bool IsOpen() { return !has_broken_off_ && (lines_ || Open()); }
  bool Open();
  bool BeginPiece(MergeText& text);
  void Close();

  std::vector<MergeInput>& inputs_;
  RecordFiles& files_;
  const ProblemHandler& tell_;
  std::size_t block_size_;
  std::size_t input_ = 0;
  std::optional<RecordBlocks> lines_;   ///< of the input that is open
  std::optional<RecordRanges> ranges_;  ///< of that, where it comes in ranges
  bool gave_some_ = false;              ///< of its text
  bool has_broken_off_ = false;
  std::string first_name_;

  std::mutex mutex_;                ///< guards what follows
  std::size_t being_read_ = 0;      ///< ranges
  std::optional<Failure> failure_;  ///< the first one of this input
  std::condition_variable read_;
};

}  // namespace ptick
