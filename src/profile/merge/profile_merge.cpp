#include "profile/merge/profile_merge.h"

#include <algorithm>
#include <cstring>
#include <span>
#include <utility>

#include "profile/scan/trace_line.h"

namespace ptick {

namespace {

constexpr std::size_t kBlockSize = std::size_t{256} * 1024;

// The key of the trace line at `line`, as SplitKey has it.
MergeKey KeyOf(const char* line, const TraceLine& trace) {
  const char* const key = line + kProfilePrefix.size();
  const char* const name_end = trace.program.data() + trace.program.size();
  return {{key, static_cast<std::size_t>(name_end - key)}, trace.line};
}

}  // namespace

// Nearly all lines are trace lines. Profiles of the same application often have them in the same
// order, so the key after the one before is tried first.
void ProfileMerge::AddLines(std::string_view block) {
  const char* line = block.data();
  const char* const end = line + block.size();
  while (line != end) {
    const TraceLine trace = ScanTraceLine(line);
    if (trace.next == nullptr) {
      AddWaiting();
      line = AddOthers(line, end);
      continue;
    }
    const MergeKey key = KeyOf(line, trace);
    line = trace.next;
    if (const MergeKeys::Id next = next_key_; values_.Keys().Is(next, key)) {
      AddWaiting();
      values_.AddTo(next, trace.ticks);
      next_key_ = next + 1;
      continue;
    }
    waiting_keys_[waiting_] = key;
    waiting_ticks_[waiting_] = trace.ticks;
    if (++waiting_ == kBatch) {
      AddWaiting();
    }
  }
  AddWaiting();
}

void ProfileMerge::AddWaiting() {
  if (waiting_ == 0) {
    return;
  }
  std::array<MergeKeys::Id, kBatch> ids;  // NOLINT(*-member-init): written by Intern
  const std::size_t count = std::exchange(waiting_, 0);
  values_.Keys().Intern(std::span(waiting_keys_).first(count), ids.data());
  for (std::size_t i = 0; i < count; ++i) {
    values_.AddTo(ids[i], waiting_ticks_[i]);
  }
  next_key_ = ids[count - 1] + 1;
}

// They come in runs, too, whose keys are looked up together.
const char* ProfileMerge::AddOthers(const char* line, const char* end) {
  std::array<MergeLine, kBatch> lines;
  std::size_t count = 0;
  do {
    const auto* line_end =
        static_cast<const char*>(std::memchr(line, '\n', static_cast<std::size_t>(end - line)));
    const MergeLine split = SplitLine({line, static_cast<std::size_t>(line_end - line)});
    line = line_end + 1;
    if (split.kind == MergeKind::kDropped) {
      continue;
    }
    if (count == 0 && values_.Keys().Is(next_key_, split.key)) {
      Combine(next_key_++, split);
      continue;
    }
    lines[count] = split;
    if (++count == kBatch) {
      AddOthers(std::span(lines).first(std::exchange(count, 0)));
    }
  } while (line != end && !StartsAsTraceLine(line));
  AddOthers(std::span(lines).first(count));
  return line;
}

void ProfileMerge::AddOthers(std::span<const MergeLine> lines) {
  if (lines.empty()) {
    return;
  }
  std::array<MergeKey, kBatch> keys;
  std::array<MergeKeys::Id, kBatch> ids;  // NOLINT(*-member-init): written by Intern
  std::ranges::transform(lines, keys.begin(), &MergeLine::key);
  std::size_t known = values_.Keys().size();
  values_.Keys().Intern(std::span(keys).first(lines.size()), ids.data());
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (ids[i] != known) {
      Combine(ids[i], lines[i]);
      continue;
    }
    ++known;
    if (lines[i].kind == MergeKind::kAdded) {
      values_.SetFirst(ids[i], lines[i].value);
    } else {
      values_.Set(ids[i], lines[i].value);
    }
  }
  next_key_ = ids[lines.size() - 1] + 1;
}

void ProfileMerge::Combine(MergeKeys::Id key, const MergeLine& line) {
  switch (line.kind) {
    case MergeKind::kSmallest:
      if (values_.Compare(key, line.value) > 0) {
        values_.Set(key, line.value);
      }
      break;
    case MergeKind::kLargest:
      if (values_.Compare(key, line.value) < 0) {
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

std::string_view MergedLines::Next() {
  block_.clear();
  for (; next_ < values_.Keys().size() && block_.size() < kBlockSize; ++next_) {
    block_ += kProfilePrefix;
    values_.Keys().AppendText(next_, block_);
    block_ += '\t';
    values_.AppendText(next_, block_);
    block_ += '\n';
  }
  const std::size_t size = block_.size();
  block_.append(kBlockPadding, '\0');
  return std::string_view(block_).substr(0, size);
}

}  // namespace ptick
