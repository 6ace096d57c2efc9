#include "profile/merge/profile_merge.h"

#include <algorithm>
#include <cstring>
#include <span>
#include <utility>

#include "profile/scan/trace_line.h"

namespace ptick {

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
    const MergeKey key = KeyOfTrace(trace);
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
      values_.Combine(next_key_++, split);
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
      values_.Combine(ids[i], lines[i]);
    } else {
      values_.SetFirstOf(ids[i], lines[i]);
      ++known;
    }
  }
  next_key_ = ids[lines.size() - 1] + 1;
}

void ProfileMerge::AddBlocks(MergeSource& source, const ThreadPlan& plan) {
  std::vector<MergePart> parts;
  for (std::size_t part = 0; part < plan.threads; ++part) {
    parts.emplace_back(memory_);
  }
  std::uint32_t place = 0;
  for (MergeKeys::Id key = 0; key < values_.Keys().size(); ++key) {
    parts[PartOf(values_.Keys().KeyOf(key), parts.size())].TakeKey(values_, key, place++);
  }
  for (MergePart& part : parts) {
    part.EndLot();
  }
  values_ = MergeValues(memory_);
  parts_ = std::move(parts);
  SharedMerge shared(source, parts_, plan);
  DoInOrder(shared, plan.threads, SharedMerge::SlotsFor(plan.threads));
}

std::size_t ProfileMerge::KeyCount() const {
  std::size_t count = values_.Keys().size();
  for (const MergePart& part : parts_) {
    count += part.Values().Keys().size();
  }
  return count;
}

MergedKeys ProfileMerge::TakeKeys() {
  return parts_.empty() ? MergedKeys(std::move(values_)) : MergedKeys(std::move(parts_));
}

}  // namespace ptick
