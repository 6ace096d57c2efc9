#include "companion/inputs/profile_inputs.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

#include "companion/inputs/input_lines.h"
#include "companion/problem.h"
#include "profile/parse/record_parser.h"
#include "profile/parse/unknown_record.h"
#include "profile/profile_loader.h"

namespace ptick::companion {
namespace {

/// Hands blocks on, to a merge as well where there is one, and remembers the last.
class LastBlock final : public LineBlocks {
 public:
  LastBlock(LineBlocks& blocks, ProfileMerge* merge) : blocks_(blocks), merge_(merge) {}

  std::string_view Next() override {
    block_ = blocks_.Next();
    if (merge_ != nullptr && !block_.empty()) {
      merge_->AddLines(block_);
    }
    return block_;
  }
  std::string_view Get() const { return block_; }

 private:
  LineBlocks& blocks_;
  ProfileMerge* merge_;
  std::string_view block_;
};

void ReadMerged(MergedProfile&& merged, const ReadOptions& options, ProfileTables& tables) {
  if (const std::optional<ReadProblem> problem =
          ReadMergedProfile(std::move(merged), options, tables)) {
    // Every line was checked, and a merge keeps the types of records.
    throw Trouble({.file = tables.ProfileName,
                   .line = static_cast<std::uint64_t>(problem->line),
                   .reason = "unknown record type"});
  }
}

}  // namespace

void ProfileInputs::ReadOne(const std::string& name, const ReadOptions& options,
                            ProfileTables& tables) const {
  ReadRun(name, options, tables, nullptr);
}

void ProfileInputs::ReadRun(const std::string& name, const ReadOptions& options,
                            ProfileTables& tables, ProfileMerge* merge) const {
  InputLines lines(open_(name), InputName(name), progress_);
  LastBlock blocks(lines, merge);
  if (const std::optional<ReadProblem> problem = ParseProfileLines(blocks, options, tables)) {
    throw lines.UnknownRecordIn(blocks.Get(), static_cast<std::uint64_t>(problem->line));
  }
  tables.ProfileName = InputName(name);
}

void ProfileInputs::Merge(const std::string& name, ProfileMerge& merge) const {
  InputLines lines(open_(name), InputName(name), progress_);
  std::uint64_t count = 0;
  for (std::string_view block = lines.Next(); !block.empty(); block = lines.Next()) {
    if (FindUnknownRecord(block, count)) {
      throw lines.UnknownRecordIn(block, count + 1);
    }
    merge.AddLines(block);
  }
}

void ProfileInputs::Read(const std::vector<std::string>& names, const ReadOptions& options,
                         ProfileTables& tables) const {
  if (names.empty()) {
    return;
  }
  if (names.size() == 1) {
    ReadOne(names.front(), options, tables);
    return;
  }
  MergedProfile merged{ProfileMerge(options.table_memory), InputName(names.front()), false};
  for (const std::string& name : names) {
    Merge(name, merged.merge);
  }
  ReadMerged(std::move(merged), options, tables);
}

void ProfileInputs::ReadEach(const std::vector<std::string>& names, const ReadOptions& options,
                             ProfileTables& tables, const RunVisitor& visit) const {
  if (names.size() == 1) {
    ReadOne(names.front(), options, tables);
    visit(tables);
    return;
  }
  MergedProfile merged{ProfileMerge(options.table_memory), InputName(names.front()), false};
  for (const std::string& name : names) {
    ProfileTables run;
    ReadRun(name, options, run, &merged.merge);
    visit(run);
  }
  ReadMerged(std::move(merged), options, tables);
}

}  // namespace ptick::companion
