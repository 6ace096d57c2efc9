#include "profile/merge/merge_part.h"

#include <algorithm>

namespace ptick {

void MergePart::TakeKey(const MergeValues& from, MergeKeys::Id key, std::uint32_t place) {
  const MergeKeys::Id own = values_.Keys().Intern(from.Keys().KeyOf(key));
  values_.Copy(from, key, own);
  places_.Append(place);
}

void MergePart::TakeLines(std::span<const SortedBlock> blocks, std::size_t part,
                          const std::deque<ThreadPrograms>& programs) {
  heads_.resize(programs.size());
  std::uint32_t place = 0;
  for (const SortedBlock& block : blocks) {
    HeadNumbers& heads = heads_[block.thread];
    heads.resize(std::max(heads.size(), block.program_count), kUnknown);
    const Source source{&block, &programs[block.thread], heads.data(), place};
    const std::vector<SortedLine>& lines = block.lines[part];
    const SortedLine* line = lines.data();
    const SortedLine* const end = line + lines.size();
    while (line != end) {
      if (line->program == SortedLine::kOther) {
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
  if (line.program == SortedLine::kByText) {
    const MergeKey& key = source.block->keys[line.number];
    return {values_.Keys().Heads().Intern(key.head), key.number};
  }
  NameTable::Id& head = source.heads[line.program];
  if (head == kUnknown) {
    head = source.programs->InternHeadIn(values_.Keys().Heads(), line.program);
  }
  return {head, line.number};
}

// Profiles of the same application often have their lines in the same order: takes those whose keys
// follow each other here. Returns the first line that is not of that kind.
const SortedLine* MergePart::TakeFollowing(const SortedLine* line, const SortedLine* end,
                                           const Source& source) {
  while (line != end && line->program != SortedLine::kOther &&
         values_.Keys().Is(next_key_, KeyOf(*line, source))) {
    values_.AddTo(next_key_++, line->ticks);
    ++line;
  }
  return line;
}

// Looks some keys up together.
const SortedLine* MergePart::TakeBatch(const SortedLine* line, const SortedLine* end,
                                       const Source& source) {
  const SortedLine* next = line;
  const auto next_key = [&](MergeKeys::Key& key) {
    if (next == end || next->program == SortedLine::kOther) {
      return false;
    }
    key = KeyOf(*next++, source);
    return true;
  };
  std::size_t known = places_.size();
  const auto use = [&](MergeKeys::Id id) {
    if (id == known) {
      places_.Append(source.place + line->place);
      ++known;
    }
    values_.AddTo(id, line->ticks);
    next_key_ = id + 1;
    ++line;
  };
  values_.Keys().InternEach(next_key, use);
  return line;
}

void MergePart::TakeOther(const MergeLine& line, std::uint32_t place) {
  const MergeKeys::Id key = values_.Keys().Intern(line.key);
  if (key == places_.size()) {
    places_.Append(place);
    values_.SetFirstOf(key, line);
  } else {
    values_.Combine(key, line);
  }
  next_key_ = key + 1;
}

}  // namespace ptick
