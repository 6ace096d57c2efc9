#include "profile/profile_merge.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <utility>

#include "profile/open_record.h"
#include "value/stop.h"
#include "value/value.h"

namespace ptick {

namespace {

constexpr std::string_view kPrefix = "PROFILE:";
constexpr std::size_t kBlockSize = 256 * 1024;

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

void MergeLines(std::string_view block, ProfileMerge& merge) {
  const char* line = block.data();
  const char* const end = line + block.size();
  while (line != end) {
    const auto* line_end =
        static_cast<const char*>(std::memchr(line, '\n', static_cast<std::size_t>(end - line)));
    merge.AddLine({line, static_cast<std::size_t>(line_end - line)});
    line = line_end + 1;
  }
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
    MergeLines(block, merge);
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
  for (const MergeRule& rule : kMergeRules) {
    if (rule.RecordType == record_type) {
      return rule.Kind;
    }
  }
  return MergeKind::kAdded;
}

void ProfileMerge::AddLine(std::string_view line) {
  const std::string_view::size_type tab = line.rfind('\t');
  if (tab == std::string_view::npos || !line.starts_with(kPrefix)) {
    return;
  }
  const MergeKind kind = MergeKindOf(RecordTypeOf(line));
  if (kind == MergeKind::kDropped) {
    return;
  }
  const std::string_view value = line.substr(tab + 1);
  const std::size_t known = keys_.size();
  const NameTable::Id index = keys_.Intern(line.substr(0, tab));
  if (index == known) {
    values_.Append(value);
    return;
  }
  switch (kind) {
    case MergeKind::kSmallest:
      if (Value(value) < values_.Text(index)) {
        values_.Set(index, value);
      }
      break;
    case MergeKind::kLargest:
      if (Value(value) > values_.Text(index)) {
        values_.Set(index, value);
      }
      break;
    case MergeKind::kLast:
      values_.Set(index, value);
      break;
    case MergeKind::kAdded:
      values_.AddTo(index, value);
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
