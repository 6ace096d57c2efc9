#include "profile/profile_loader.h"

#include <cstdint>
#include <optional>
#include <utility>

#include "profile/merge_inputs.h"
#include "profile/parse/shared_parse.h"
#include "profile/parse_merged.h"
#include "records/line_blocks.h"
#include "records/open_record.h"

namespace ptick {

namespace {

// A merge of little text is that of one thread.
void MergeBlocks(MergeInputs& inputs, const ThreadPlan& threads, ProfileMerge& merge) {
  std::size_t merged = 0;
  while (threads.threads <= 1 || merged + inputs.SizeAhead() < threads.bytes_alone) {
    const std::string_view block = inputs.Next();
    if (block.empty()) {
      return;
    }
    merge.AddLines(block);
    merged += block.size();
  }
  merge.AddBlocks(inputs, threads);
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
  std::vector<MergeInput> inputs;
  inputs.reserve(names.size());
  for (const std::string& name : names) {
    inputs.push_back({&name});
  }
  for (;;) {
    MergedProfile merged{ProfileMerge(memory), "", false};
    MergeInputs blocks(inputs, files, tell, threads.block_size);
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
