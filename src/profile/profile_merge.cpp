#include "profile/profile_merge.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <optional>
#include <span>
#include <utility>

#include "profile/open_record.h"
#include "value/stop.h"
#include "value/value.h"

namespace ptick {

namespace {

constexpr std::string_view kPrefix = "PROFILE:";
constexpr std::size_t kBlockSize = 256 * 1024;
constexpr std::size_t kBatch = 32;

struct MergeRule {
  std::string_view RecordType;
  MergeKind Kind;
};

/// `MinKeys`, `MaxKeys`, `DroppedKeys` and `LastKeys`.
constexpr std::array kMergeRules = {
    MergeRule{"startclock", MergeKind::kSmallest}, MergeRule{"starttime", MergeKind::kSmallest},
    MergeRule{"endclock", MergeKind::kLargest},    MergeRule{"endtime", MergeKind::kLargest},
    MergeRule{"memused", MergeKind::kLargest},     MergeRule{"memfree", MergeKind::kLargest},
    MergeRule{"pid", MergeKind::kDropped},         MergeRule{"ppid", MergeKind::kDropped},
    MergeRule{"typerate", MergeKind::kDropped},    MergeRule{"resource", MergeKind::kDropped},
    MergeRule{"input", MergeKind::kDropped},       MergeRule{"program", MergeKind::kDropped},
    MergeRule{"pagesize", MergeKind::kLast},       MergeRule{"hertz", MergeKind::kLast},
};

// The text behind the prefix's ":" up to the next ":" or the end of the first field.
std::string_view RecordTypeOf(std::string_view line) {
  const std::string_view type = line.substr(kPrefix.size());
  return type.substr(0, std::min(type.find(':'), type.find('\t')));
}

/// The key and the value of a line, divided at its last TAB; nothing for a line that is not merged.
struct DividedLine {
  std::string_view Key;
  std::string_view Value;
};

std::optional<DividedLine> Divide(std::string_view line) {
  const std::string_view::size_type tab = line.rfind('\t');
  if (tab == std::string_view::npos || !line.starts_with(kPrefix)) {
    return std::nullopt;
  }
  return DividedLine{line.substr(0, tab), line.substr(tab + 1)};
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

MergeKind MergeKindOf(std::string_view record_type) {
  if (record_type == "trace") {  // nearly every line
    return MergeKind::kAdded;
  }
  for (const MergeRule& rule : kMergeRules) {
    if (rule.RecordType == record_type) {
      return rule.Kind;
    }
  }
  return MergeKind::kAdded;
}

// Profiles of the same application often have their lines in the same order, so the key behind the
// one before is tried first.
void ProfileMerge::AddLines(std::string_view block) {
  std::array<MergeLine, kBatch> batch;  // NOLINT(*-member-init): filled from the front
  std::size_t waiting = 0;
  const char* line = block.data();
  const char* const end = line + block.size();
  while (line != end) {
    const auto* line_end =
        static_cast<const char*>(std::memchr(line, '\n', static_cast<std::size_t>(end - line)));
    const auto divided = Divide({line, static_cast<std::size_t>(line_end - line)});
    line = line_end + 1;
    if (!divided) {
      continue;
    }
    const MergeKind kind = MergeKindOf(RecordTypeOf(divided->Key));
    if (kind == MergeKind::kDropped) {
      continue;
    }
    if (const NameTable::Id key = next_key_; keys_.Is(key, divided->Key)) {
      AddBatch(std::span(batch).first(std::exchange(waiting, 0)));
      Combine(key, kind, divided->Value);
      next_key_ = key + 1;
      continue;
    }
    batch[waiting++] = {divided->Key, divided->Value, kind, HashName(divided->Key), 0};
    if (waiting == kBatch) {
      AddBatch(batch);
      waiting = 0;
    }
  }
  AddBatch(std::span(batch).first(waiting));
}

// A big merge looks up keys that are far away in memory. A batch of lookups waits for all of them
// at once, step by step, instead of for each in turn.
void ProfileMerge::AddBatch(std::span<MergeLine> lines) {
  for (const MergeLine& line : lines) {
    keys_.PrefetchSlot(line.Hash);
  }
  for (MergeLine& line : lines) {
    line.LikelyId = keys_.LikelyId(line.Hash);
    keys_.PrefetchEnd(line.LikelyId);
    values_.Prefetch(line.LikelyId);
  }
  for (const MergeLine& line : lines) {
    keys_.PrefetchText(line.LikelyId);
  }
  for (const MergeLine& line : lines) {
    Add(line);
  }
}

void ProfileMerge::Add(const MergeLine& line) {
  const std::size_t known = keys_.size();
  const NameTable::Id key = keys_.Intern(line.Key, line.Hash);
  if (key == known) {
    values_.Append(line.Value);
  } else {
    Combine(key, line.Kind, line.Value);
  }
  next_key_ = key + 1;
}

void ProfileMerge::Combine(NameTable::Id key, MergeKind kind, std::string_view value) {
  switch (kind) {
    case MergeKind::kSmallest:
      if (Value(value) < values_.Text(key)) {
        values_.Set(key, value);
      }
      break;
    case MergeKind::kLargest:
      if (Value(value) > values_.Text(key)) {
        values_.Set(key, value);
      }
      break;
    case MergeKind::kLast:
      values_.Set(key, value);
      break;
    case MergeKind::kAdded:
      values_.AddTo(key, value);
      break;
    case MergeKind::kDropped:
      break;
  }
}

std::string_view ProfileMerge::Next() {
  block_.clear();
  for (; handed_out_ < keys_.size() && block_.size() < kBlockSize; ++handed_out_) {
    block_ += keys_[static_cast<NameTable::Id>(handed_out_)];
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
