#include "companion/inputs/profile_inputs.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

#include "companion/inputs/input_lines.h"
#include "companion/problem.h"
#include "profile/parse/record_parser.h"
#include "profile/profile_loader.h"
#include "value/byte_buffer.h"

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

void ProfileInputs::Merge(const NextName& next_name, const ThreadPlan& threads,
                          ProfileMerge& merge) const {
  CheckedBlocks blocks(next_name, open_, progress_, threads.block_size);
  std::size_t merged = 0;
  constexpr std::size_t kSmallFile = std::size_t{16} * 1024;
  // Small files take longer to open than to merge: nobody would have to do.
  for (bool is_worth_it = false; !is_worth_it;) {
    const std::string_view block = blocks.Next();
    if (block.empty()) {
      return;
    }
    merge.AddLines(block);
    merged += block.size();
    is_worth_it = threads.threads > 1 && merged >= threads.bytes_alone &&
                  block.size() >= std::min(kSmallFile, threads.block_size / 4);
  }
  merge.AddBlocks(blocks, threads);
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
  auto next = names.begin();
  const auto next_name = [&] {
    return next == names.end() ? std::nullopt : std::optional<std::string>(*next++);
  };
  Merge(next_name, options.threads, merged.merge);
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
