#include "profile/merge/profile_merge.h"

#include <array>
#include <cstring>
#include <memory>
#include <span>
#include <utility>

#include "output/stop.h"
#include "profile/scan/trace_line.h"
#include "profile/tables/record_types.h"
#include "records/open_record.h"
#include "value/value.h"

namespace ptick {

namespace {

constexpr std::size_t kBlockSize = std::size_t{256} * 1024;
constexpr std::size_t kBatch = 32;

/// The key of the trace line at `line`, as DivideKey has it.
MergeKey KeyOf(const char* line, const TraceLine& trace) {
  const char* const key = line + kProfilePrefix.size();
  const char* const name_end = trace.program.data() + trace.program.size();
  return {{key, static_cast<std::size_t>(name_end - key)}, trace.line};
}

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

// Nearly all lines are trace lines. Profiles of the same application often have them in the same
// order, so the key behind the one before is tried first.
void ProfileMerge::AddLines(std::string_view block) {
  std::array<WaitingLine, kBatch> batch;  // NOLINT(*-member-init): filled from the front
  std::size_t waiting = 0;
  const auto add_waiting = [&] { AddTraces(std::span(batch).first(std::exchange(waiting, 0))); };
  const char* line = block.data();
  const char* const end = line + block.size();
  while (line != end) {
    const TraceLine trace = ScanTraceLine(line);
    if (trace.next == nullptr) {
      add_waiting();
      const auto* line_end =
          static_cast<const char*>(std::memchr(line, '\n', static_cast<std::size_t>(end - line)));
      AddOther({line, static_cast<std::size_t>(line_end - line)});
      line = line_end + 1;
      continue;
    }
    const MergeKey key = KeyOf(line, trace);
    line = trace.next;
    if (const MergeKeys::Id next = next_key_; keys_.Is(next, key)) {
      add_waiting();
      values_.AddTo(next, trace.ticks);
      next_key_ = next + 1;
      continue;
    }
    batch[waiting++] = {keys_.StartLookup(key), trace.ticks};
    if (waiting == kBatch) {
      add_waiting();
    }
  }
  add_waiting();
}

// A batch of lookups waits for all of them at once, step by step, instead of for each in turn.
void ProfileMerge::AddTraces(std::span<WaitingLine> lines) {
  if (keys_.HasManyHeads()) {
    for (WaitingLine& line : lines) {
      keys_.FindLikelyHead(line.key);
    }
    for (const WaitingLine& line : lines) {
      keys_.FetchLikelyHead(line.key);
    }
  }
  for (WaitingLine& line : lines) {
    keys_.InternHead(line.key);
  }
  for (WaitingLine& line : lines) {
    keys_.FindLikelyId(line.key);
  }
  for (const WaitingLine& line : lines) {
    const MergeKeys::Id key = keys_.Intern(line.key);
    values_.AddTo(key, line.ticks);
    next_key_ = key + 1;
  }
}

void ProfileMerge::AddOther(std::string_view line) {
  const MergeLine divided = DivideLine(line);
  if (divided.kind == MergeKind::kDropped) {
    return;
  }
  const std::size_t known = keys_.size();
  const MergeKeys::Id key = keys_.Intern(divided.key);
  if (key == known) {
    values_.Set(key, divided.value);
  } else {
    Combine(key, divided);
  }
  next_key_ = key + 1;
}

void ProfileMerge::Combine(MergeKeys::Id key, const MergeLine& line) {
  switch (line.kind) {
    case MergeKind::kSmallest:
      if (Value(line.value) < values_.Text(key)) {
        values_.Set(key, line.value);
      }
      break;
    case MergeKind::kLargest:
      if (Value(line.value) > values_.Text(key)) {
        values_.Set(key, line.value);
      }
      break;
    case MergeKind::kLast:
      values_.Set(key, line.value);
      break;
    case MergeKind::kAdded:
      values_.AddTo(key, line.value);
      break;
    case MergeKind::kDropped:
      break;
  }
}

std::string_view ProfileMerge::Next() {
  block_.clear();
  for (; handed_out_ < keys_.size() && block_.size() < kBlockSize; ++handed_out_) {
    block_ += kProfilePrefix;
    keys_.AppendText(handed_out_, block_);
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
