#include "profile/profile_loader.h"

#include <algorithm>
#include <span>
#include <utility>

#include "profile/parse/record_parser.h"
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

enum class Taken {
  kWhole,
  kNothing,  ///< it was told and left out
  kInPart,   ///< the same, but lines of it have been merged
};

Taken MergeInput(Input& input, RecordFiles& files, const ProblemHandler& tell,
                 ProfileMerge& merge) {
  ReadProblem problem;
  std::unique_ptr<RecordReader> record = OpenNamedRecord(*input.name, files, problem);
  if (!record) {
    input.is_left_out = true;
    tell(problem);
    return Taken::kNothing;
  }
  RecordBlocks lines(std::move(record));
  input.can_be_read_again = lines.CanBeReadAgain();
  bool merged_some = false;
  for (std::string_view block = lines.Next(); !block.empty(); block = lines.Next()) {
    merge.AddLines(block);
    merged_some = true;
  }
  if (!lines.Failed()) {
    return Taken::kWhole;
  }
  input.is_left_out = true;
  tell(UnreadableRecord(*input.name, lines.Error()));
  return merged_some ? Taken::kInPart : Taken::kNothing;
}

/// Merges the inputs that are not left out. False when one was taken in part.
bool MergeInputs(std::span<Input> inputs, RecordFiles& files, const ProblemHandler& tell,
                 MergedProfile& merged) {
  for (std::size_t n = 0; n < inputs.size(); ++n) {
    if (inputs[n].is_left_out) {
      continue;
    }
    const Taken taken = MergeInput(inputs[n], files, tell, merged.merge);
    if (taken == Taken::kInPart) {
      const auto is_spent = [](const Input& before) {
        return !before.is_left_out && !before.can_be_read_again;
      };
      merged.is_broken = std::ranges::any_of(inputs.first(n), is_spent);
      return false;
    }
    if (taken == Taken::kWhole && merged.first_name.empty()) {
      merged.first_name = *inputs[n].name;
    }
  }
  return true;
}

}  // namespace

std::optional<ReadProblem> ReadProfile(std::unique_ptr<RecordReader> record, std::string_view name,
                                       const ReadOptions& options, ProfileTables& tables) {
  RecordBlocks lines(std::move(record));
  std::optional<ReadProblem> problem = ParseProfileLines(lines, options, tables);
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
                                std::pmr::memory_resource* memory, const ProblemHandler& tell) {
  std::vector<Input> inputs;
  inputs.reserve(names.size());
  for (const std::string& name : names) {
    inputs.push_back({&name});
  }
  for (;;) {
    MergedProfile merged{ProfileMerge(memory), "", false};
    if (MergeInputs(inputs, files, tell, merged) || merged.is_broken) {
      return merged;
    }
  }
}

std::optional<ReadProblem> ReadMergedProfile(MergedProfile&& merged, const ReadOptions& options,
                                             ProfileTables& tables) {
  tables.ProfileName = merged.first_name + " ...";
  MergedLines lines = merged.merge.TakeLines();
  std::optional<ReadProblem> problem = ParseProfileLines(lines, options, tables);
  if (problem) {
    problem->name = tables.ProfileName;
  }
  return problem;
}

}  // namespace ptick
