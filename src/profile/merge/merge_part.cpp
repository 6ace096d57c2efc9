#include "profile/merge/merge_part.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

#include "profile/scan/trace_line.h"

namespace ptick {

namespace {

// Numbers that follow each other are spread by the multiplication.
std::size_t PartOfNumber(std::uint32_t number, std::size_t parts) {
  constexpr std::uint32_t kOdd = 0x9E3779B1U;
  const std::uint32_t spread = number * kOdd;
  return static_cast<std::size_t>(std::uint64_t{spread} * parts >> 32U);
}

// The lines of a block on their way to its parts.
class Sorting {
 public:
  Sorting(SortedBlock& block, std::size_t parts, ThreadHeads& heads)
      : block_(block), parts_(parts), heads_(heads) {
    block.lines.resize(parts);
    for (std::vector<SortedLine>& lines : block.lines) {
      lines.clear();
    }
    block.keys.clear();
    block.others.clear();
    block.line_count = 0;
  }

  void AddTrace(const MergeKey& key, std::uint32_t ticks) {
    Waiting& waiting = waiting_[count_];
    waiting.key = key;
    waiting.ticks = ticks;
    waiting.hash = heads_.Prefetch(key.head);
    if (++count_ == waiting_.size()) {
      AddWaiting();
    }
  }

  void AddOther(const MergeLine& line) {
    AddWaiting();
    const auto other = static_cast<std::uint32_t>(block_.others.size());
    block_.others.push_back(line);
    block_.lines[PartOf(line.key, parts_)].push_back(
        {SortedLine::kOther, other, 0, block_.line_count++});
  }

  void AddWaiting() {
    for (const Waiting& waiting : std::span(waiting_).first(std::exchange(count_, 0))) {
      const MergeKey& key = waiting.key;
      SortedLine line{heads_.NumberOf(key.head, waiting.hash), key.number, waiting.ticks,
                      block_.line_count++};
      if (line.head == SortedLine::kByText) {
        line.number = static_cast<std::uint32_t>(block_.keys.size());
        block_.keys.push_back(key);
      }
      block_.lines[PartOfNumber(key.number, parts_)].push_back(line);
    }
  }

 private:
  struct Waiting {
    MergeKey key;
    std::uint32_t ticks;
    std::uint32_t hash;
  };

  SortedBlock& block_;
  std::size_t parts_;
  ThreadHeads& heads_;
  std::array<Waiting, 16> waiting_;
  std::size_t count_ = 0;
};

}  // namespace

std::size_t PartOf(const MergeKey& key, std::size_t parts) {
  const bool has_number = key.number != MergeKey::kNoNumber;
  return PartOfNumber(has_number ? key.number : HashName(key.head, ProcessSecret()), parts);
}

void SortByParts(SortedBlock& block, std::size_t parts, ThreadHeads& heads) {
  Sorting sorting(block, parts, heads);
  const char* line = block.text.data();
  const char* const end = line + block.text.size();
  while (line != end) {
    if (const TraceLine trace = ScanTraceLine(line); trace.next != nullptr) {
      sorting.AddTrace(KeyOfTrace(line, trace), trace.ticks);
      line = trace.next;
      continue;
    }
    const auto left = static_cast<std::size_t>(end - line);
    const auto* line_end = static_cast<const char*>(std::memchr(line, '\n', left));
    const MergeLine split = SplitLine({line, static_cast<std::size_t>(line_end - line)});
    line = line_end + 1;
    if (split.kind != MergeKind::kDropped) {
      sorting.AddOther(split);
    }
  }
  sorting.AddWaiting();
  block.head_count = heads.size();
}

void MergePart::TakeKey(const MergeValues& from, MergeKeys::Id key, std::uint32_t place) {
  const MergeKeys::Id own = values_.Keys().Intern(from.Keys().KeyOf(key));
  values_.Copy(from, key, own);
  places_.push_back(place);
}

void MergePart::TakeLines(std::span<const SortedBlock> blocks, std::size_t part,
                          const std::deque<ThreadHeads>& heads) {
  heads_.resize(heads.size());
  std::uint32_t place = 0;
  for (const SortedBlock& block : blocks) {
    HeadNumbers& known = heads_[block.thread];
    known.resize(std::max(known.size(), block.head_count), kUnknown);
    const Source source{&block, &heads[block.thread], &known, place};
    const std::vector<SortedLine>& lines = block.lines[part];
    const SortedLine* line = lines.data();
    const SortedLine* const end = line + lines.size();
    while (line != end) {
      if (line->head == SortedLine::kOther) {
        TakeOther(block.others[line->number], place + line->place);
        ++line;
      } else {
        line = TakeBatch(TakeFollowing(line, end, source), end, source);
      }
    }
    place += block.line_count;
  }
}

MergeKeys::Key MergePart::KeyOf(const SortedLine& line, const Source& source) {
  if (line.head == SortedLine::kByText) {
    const MergeKey& key = source.block->keys[line.number];
    return {values_.Keys().Heads().Intern(key.head), key.number};
  }
  NameTable::Id& head = (*source.known)[line.head];
  if (head == kUnknown) {
    head = source.heads->InternIn(values_.Keys().Heads(), line.head);
  }
  return {head, line.number};
}

// Profiles of the same application often have their lines in the same order: takes those whose keys
// follow each other here. Returns the first line that is not of that kind.
const SortedLine* MergePart::TakeFollowing(const SortedLine* line, const SortedLine* end,
                                           const Source& source) {
  while (line != end && line->head != SortedLine::kOther &&
         values_.Keys().Is(next_key_, KeyOf(*line, source))) {
    values_.AddTo(next_key_++, line->ticks);
    ++line;
  }
  return line;
}

// Looks some keys up together.
const SortedLine* MergePart::TakeBatch(const SortedLine* line, const SortedLine* end,
                                       const Source& source) {
  std::size_t count = 0;
  while (count < MergeKeys::kBatch && line + count != end &&
         line[count].head != SortedLine::kOther) {
    ++count;
  }
  if (count == 0) {
    return line;
  }
  std::array<MergeKeys::Id, MergeKeys::kBatch> ids;  // NOLINT(*-member-init): written by Intern
  values_.Keys().Intern(
      count, [&](std::size_t i) { return KeyOf(line[i], source); }, ids.data());
  for (std::size_t i = 0; i < count; ++i) {
    if (ids[i] == places_.size()) {
      places_.push_back(source.place + line[i].place);
    }
    values_.AddTo(ids[i], line[i].ticks);
  }
  next_key_ = ids[count - 1] + 1;
  return line + count;
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
