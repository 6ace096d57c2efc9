#include "profile/merge/merge_part.h"

#include <cstring>
#include <utility>

#include "profile/scan/trace_line.h"

namespace ptick {

namespace {

// The number of a key that has none.
std::uint32_t HashOfHead(std::string_view head) {
  return static_cast<std::uint32_t>(HashName(head, ProcessSecret()));
}

}  // namespace

// Numbers that follow each other are spread by the multiplication.
std::size_t PartOf(const MergeKey& key, std::size_t parts) {
  constexpr std::uint32_t kOdd = 0x9E3779B1U;
  const std::uint32_t number =
      key.number == MergeKey::kNoNumber ? HashOfHead(key.head) : key.number;
  const std::uint32_t spread = number * kOdd;
  return static_cast<std::size_t>(std::uint64_t{spread} * parts >> 32U);
}

void SortByParts(SortedBlock& block, std::size_t parts) {
  block.lines.resize(parts);
  for (std::vector<SortedLine>& lines : block.lines) {
    lines.clear();
  }
  block.others.clear();
  std::uint32_t place = 0;
  const char* line = block.text.data();
  const char* const end = line + block.text.size();
  while (line != end) {
    if (const TraceLine trace = ScanTraceLine(line); trace.next != nullptr) {
      const MergeKey key = KeyOfTrace(line, trace);
      block.lines[PartOf(key, parts)].push_back({key.head.data(),
                                                 static_cast<std::uint32_t>(key.head.size()),
                                                 key.number, trace.ticks, place++});
      line = trace.next;
      continue;
    }
    const auto left = static_cast<std::size_t>(end - line);
    const auto* line_end = static_cast<const char*>(std::memchr(line, '\n', left));
    const MergeLine split = SplitLine({line, static_cast<std::size_t>(line_end - line)});
    line = line_end + 1;
    if (split.kind != MergeKind::kDropped) {
      const auto other = static_cast<std::uint32_t>(block.others.size());
      block.others.push_back(split);
      block.lines[PartOf(split.key, parts)].push_back(
          {nullptr, 0, other, SortedLine::kOther, place++});
    }
  }
  block.line_count = place;
}

void MergePart::TakeKey(const MergeValues& from, MergeKeys::Id key, std::uint32_t place) {
  const MergeKeys::Id own = values_.Keys().Intern(from.Keys().KeyOf(key));
  values_.Copy(from, key, own);
  places_.push_back(place);
}

void MergePart::TakeLines(std::span<const SortedBlock> blocks, std::size_t part) {
  std::uint32_t place = 0;
  for (const SortedBlock& block : blocks) {
    for (const SortedLine& line : block.lines[part]) {
      if (line.ticks == SortedLine::kOther) {
        TakeWaiting();
        TakeOther(block.others[line.number], place + line.place);
      } else {
        TakeLine(line, place + line.place);
      }
    }
    place += block.line_count;
  }
  TakeWaiting();
}

void MergePart::TakeLine(const SortedLine& line, std::uint32_t place) {
  const MergeKey key{{line.head, line.head_size}, line.number};
  if (const MergeKeys::Id next = next_key_; values_.Keys().Is(next, key)) {
    TakeWaiting();
    values_.AddTo(next, line.ticks);
    next_key_ = next + 1;
    return;
  }
  waiting_keys_[waiting_] = key;
  waiting_ticks_[waiting_] = line.ticks;
  waiting_places_[waiting_] = place;
  if (++waiting_ == kBatch) {
    TakeWaiting();
  }
}

void MergePart::TakeWaiting() {
  if (waiting_ == 0) {
    return;
  }
  std::array<MergeKeys::Id, kBatch> ids;  // NOLINT(*-member-init): written by Intern
  const std::size_t count = std::exchange(waiting_, 0);
  values_.Keys().Intern(std::span(waiting_keys_).first(count), ids.data());
  for (std::size_t i = 0; i < count; ++i) {
    if (ids[i] == places_.size()) {
      places_.push_back(waiting_places_[i]);
    }
    values_.AddTo(ids[i], waiting_ticks_[i]);
  }
  next_key_ = ids[count - 1] + 1;
}

void MergePart::TakeOther(const MergeLine& line, std::uint32_t place) {
  const MergeKeys::Id key = values_.Keys().Intern(line.key);
  if (key == places_.size()) {
    places_.push_back(place);
    values_.SetFirstOf(key, line);
  } else {
    values_.Combine(key, line);
  }
  next_key_ = key + 1;
}

}  // namespace ptick
