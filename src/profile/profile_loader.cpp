#include "profile/profile_loader.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <span>
#include <utility>

#include "profile/parse/shared_parse.h"
#include "profile/parse_merged.h"
#include "records/line_blocks.h"
#include "records/open_record.h"

namespace ptick {

namespace {

/// A profile to be merged.
struct Input {
  const std::string* name;
  bool is_left_out = false;
  bool can_be_read_again = true;
};

/// The blocks of all inputs that are not left out, one input after the other.
class InputBlocks {
 public:
  InputBlocks(std::vector<Input>& inputs, RecordFiles& files, const ProblemHandler& tell,
              std::size_t block_size)
      : inputs_(inputs), files_(files), tell_(tell), block_size_(block_size) {}

  /// The next block, valid until the next call; empty at the end, and when an input has failed in
  /// the middle.
  std::string_view Next() {
    return NextBy([this] { return lines_->Next(); });
  }
  /// The same in exchange for other memory, as RecordBlocks::NextInto.
  std::string_view NextInto(ByteBuffer& block) {
    return NextBy([this, &block] { return lines_->NextInto(block); });
  }

  /// How many bytes are known to come of the input that the next block is of.
  std::uint64_t SizeAhead() {
    return !has_broken_off_ && (lines_ || Open()) ? lines_->SizeAhead() : 0;
  }

  /// Whether an input has failed after blocks of it were given. It is left out now.
  bool HasBrokenOff() const { return has_broken_off_; }

  /// Whether one of the inputs before that which has broken off cannot be read again.
  bool IsSpent() const {
    return std::ranges::any_of(std::span(inputs_).first(input_), [](const Input& before) {
      return !before.is_left_out && !before.can_be_read_again;
    });
  }

  /// The name of the first input that was read; empty when none was.
  const std::string& FirstName() const { return first_name_; }

 private:
  template <typename NextBlock>
  std::string_view NextBy(const NextBlock& next_block) {
    while (!has_broken_off_ && (lines_ || Open())) {
      if (const std::string_view block = next_block(); !block.empty()) {
        gave_some_ = true;
        return block;
      }
      Close();
    }
    return {};
  }

  // Opens the next input that can be opened.
  bool Open() {
    for (; input_ < inputs_.size(); ++input_) {
      Input& input = inputs_[input_];
      ReadProblem problem;
      if (input.is_left_out) {
        continue;
      }
      if (auto record = OpenNamedRecord(*input.name, files_, problem)) {
        lines_.emplace(std::move(record), block_size_);
        input.can_be_read_again = lines_->CanBeReadAgain();
        gave_some_ = false;
        return true;
      }
      input.is_left_out = true;
      tell_(problem);
    }
    return false;
  }

  // At the end of an input, or where it has failed.
  void Close() {
    Input& input = inputs_[input_];
    if (lines_->Failed()) {
      input.is_left_out = true;
      has_broken_off_ = gave_some_;
      tell_(UnreadableRecord(*input.name, lines_->Error()));
    } else if (first_name_.empty()) {
      first_name_ = *input.name;
    }
    lines_.reset();
    input_ += has_broken_off_ ? 0 : 1;
  }

  std::vector<Input>& inputs_;
  RecordFiles& files_;
  const ProblemHandler& tell_;
  std::size_t block_size_;
  std::size_t input_ = 0;
  std::optional<RecordBlocks> lines_;  ///< of the input that is open
  bool gave_some_ = false;             ///< blocks of that
  bool has_broken_off_ = false;
  std::string first_name_;
};

// A merge of little text is that of one thread.
void MergeBlocks(InputBlocks& blocks, const ThreadPlan& threads, ProfileMerge& merge) {
  std::size_t merged = 0;
  while (threads.threads <= 1 || merged + blocks.SizeAhead() < threads.bytes_alone) {
    const std::string_view block = blocks.Next();
    if (block.empty()) {
      return;
    }
    merge.AddLines(block);
    merged += block.size();
  }
  merge.AddBlocks([&blocks](ByteBuffer& block) { return blocks.NextInto(block); }, threads);
}

}  // namespace

std::optional<ReadProblem> ReadProfile(std::unique_ptr<RecordReader> record, std::string_view name,
                                       const ReadOptions& options, ProfileTables& tables) {
  RecordBlocks lines(std::move(record), options.threads.block_size);
  std::optional<ReadProblem> problem = ParseRecordLines(lines, options, tables);
  if (problem && problem->kind == ReadProblem::Kind::kCannotReadRecord) {
    return UnreadableRecord(name, problem->error);
  }
  while (problem && !lines.Next().empty()) {
    // A profile that cannot be read to its end is that, whatever its first part holds.
  }
  if (lines.Failed()) {
    return UnreadableRecord(name, lines.Error());
  }
  if (problem) {
    problem->name = name;
    problem->place = SplitProfileName(name);
  }
  tables.ProfileName = name;
  return problem;
}

std::optional<ReadProblem> LoadProfile(std::string_view name, RecordFiles& files,
                                       const ReadOptions& options, ProfileTables& tables) {
  ReadProblem problem;
  std::unique_ptr<RecordReader> record = OpenNamedRecord(name, files, problem);
  if (!record) {
    return problem;
  }
  return ReadProfile(std::move(record), name, options, tables);
}

std::optional<ReadProblem> MergeRecord(std::unique_ptr<RecordReader> record, std::string_view name,
                                       ProfileMerge& merge) {
  RecordBlocks lines(std::move(record));
  for (std::string_view block = lines.Next(); !block.empty(); block = lines.Next()) {
    merge.AddLines(block);
  }
  return lines.Failed() ? std::optional(UnreadableRecord(name, lines.Error())) : std::nullopt;
}

MergedProfile MergeProfileFiles(const std::vector<std::string>& names, RecordFiles& files,
                                std::pmr::memory_resource* memory, const ProblemHandler& tell,
                                const ThreadPlan& threads) {
  std::vector<Input> inputs;
  inputs.reserve(names.size());
  for (const std::string& name : names) {
    inputs.push_back({&name});
  }
  for (;;) {
    MergedProfile merged{ProfileMerge(memory), "", false};
    InputBlocks blocks(inputs, files, tell,
                       threads.block_size);
    MergeBlocks(blocks, threads, merged.merge);
    merged.first_name = blocks.FirstName();
    merged.is_broken = blocks.HasBrokenOff() && blocks.IsSpent();
    if (!blocks.HasBrokenOff() || merged.is_broken) {
      return merged;
    }
  }
}

std::optional<ReadProblem> ReadMergedProfile(MergedProfile&& merged, const ReadOptions& options,
                                             ProfileTables& tables) {
  tables.ProfileName = merged.first_name + " ...";
  const MergedKeys keys = merged.merge.TakeKeys();
  std::optional<ReadProblem> problem = ParseMerged(keys, options, tables);
  if (problem) {
    problem->name = tables.ProfileName;
  }
  return problem;
}

}  // namespace ptick
