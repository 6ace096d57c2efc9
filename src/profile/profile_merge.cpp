#include "profile/profile_merge.h"

#include <array>
#include <memory>
#include <span>
#include <utility>

#include "profile/open_record.h"
#include "value/stop.h"
#include "value/value.h"

namespace ptick {

namespace {

constexpr std::size_t kBlockSize = std::size_t{256} * 1024;
constexpr std::size_t kBatch = 32;

void MergeProfileFile(const std::string& name, Platform& platform, Output& output,
                      ProfileMerge& merge) {
  std::unique_ptr<RecordReader> record = OpenNamedRecord(name, platform, output);
  if (!record) {
    return;
  }
  RecordBlocks lines(std::move(record));
  bool merged_some = false;
  for (std::string_view block = lines.Next(); !block.empty(); block = lines.Next()) {
    merge.AddLines(block);
    merged_some = true;
  }
  if (!lines.Failed()) {
    merge.NoteName(name);
  } else if (merged_some) {
    StopUnreadable(name, output);
  } else {
    ReportUnreadable(name, output);
  }
}

}  // namespace

// Profiles of the same application often have their lines in the same order, so the key behind the
// one before is tried first.
void ProfileMerge::AddLines(std::string_view block) {
  std::array<WaitingLine, kBatch> batch;  // NOLINT(*-member-init): filled from the front
  std::size_t waiting = 0;
  const char* line = block.data();
  const char* const end = line + block.size();
  while (line != end) {
    const MergeLine divided = DivideLine(line);
    if (divided.Kind == MergeKind::kDropped) {
      continue;
    }
    if (const MergeKeys::Id key = next_key_; keys_.Is(key, divided.Key)) {
      AddBatch(std::span(batch).first(std::exchange(waiting, 0)));
      Combine(key, divided);
      next_key_ = key + 1;
      continue;
    }
    batch[waiting++] = {divided, {.Key = divided.Key}};
    if (waiting == kBatch) {
      AddBatch(batch);
      waiting = 0;
    }
  }
  AddBatch(std::span(batch).first(waiting));
}

// A batch of lookups waits for all of them at once, step by step, instead of for each in turn.
void ProfileMerge::AddBatch(std::span<WaitingLine> lines) {
  for (WaitingLine& line : lines) {
    keys_.StartLookup(line.Lookup);
  }
  if (keys_.HasManyHeads()) {
    for (WaitingLine& line : lines) {
      keys_.FindLikelyHead(line.Lookup);
    }
    for (const WaitingLine& line : lines) {
      keys_.FetchLikelyHead(line.Lookup);
    }
  }
  for (WaitingLine& line : lines) {
    keys_.InternHead(line.Lookup);
  }
  for (WaitingLine& line : lines) {
    keys_.FindLikelyId(line.Lookup);
    values_.Prefetch(line.Lookup.LikelyId);
  }
  for (const WaitingLine& line : lines) {
    Add(line);
  }
}

void ProfileMerge::Add(const WaitingLine& line) {
  const std::size_t known = keys_.size();
  const MergeKeys::Id key = keys_.Intern(line.Lookup);
  if (key == known) {
    Append(line.Line);
  } else {
    Combine(key, line.Line);
  }
  next_key_ = key + 1;
}

void ProfileMerge::Append(const MergeLine& line) {
  if (line.Number != kNoOrdinaryNumber) {
    values_.Append(line.Number);
  } else {
    values_.Append(line.Value);
  }
}

void ProfileMerge::Combine(MergeKeys::Id key, const MergeLine& line) {
  if (line.Number != kNoOrdinaryNumber) {
    values_.AddTo(key, line.Number);
    return;
  }
  switch (line.Kind) {
    case MergeKind::kSmallest:
      if (Value(line.Value) < values_.Text(key)) {
        values_.Set(key, line.Value);
      }
      break;
    case MergeKind::kLargest:
      if (Value(line.Value) > values_.Text(key)) {
        values_.Set(key, line.Value);
      }
      break;
    case MergeKind::kLast:
      values_.Set(key, line.Value);
      break;
    case MergeKind::kAdded:
      values_.AddTo(key, line.Value);
      break;
    case MergeKind::kDropped:
      break;
  }
}

std::string_view ProfileMerge::Next() {
  block_.clear();
  for (; handed_out_ < keys_.size() && block_.size() < kBlockSize; ++handed_out_) {
    block_ += "PROFILE:";
    keys_.AppendText(static_cast<MergeKeys::Id>(handed_out_), block_);
    block_ += '\t';
    values_.AppendText(handed_out_, block_);
    block_ += '\n';
  }
  const std::size_t size = block_.size();
  block_.append(kBlockPadding, '\0');
  return std::string_view(block_).substr(0, size);
}

void MergeProfileFiles(const std::vector<std::string>& names, Platform& platform, Output& output,
                       ProfileMerge& merge) {
  for (const std::string& name : names) {
    MergeProfileFile(name, platform, output, merge);
  }
  if (merge.Empty()) {
    output.PrintTerminal("No input files...");
    throw Stop{2};
  }
}

}  // namespace ptick
