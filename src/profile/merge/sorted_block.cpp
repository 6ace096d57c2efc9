#include "profile/merge/sorted_block.h"

#include <array>
#include <cstring>
#include <span>
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
  Sorting(SortedBlock& block, std::size_t parts, ThreadPrograms& programs)
      : block_(block), parts_(parts), programs_(programs) {
    block.lines.resize(parts);
    for (std::vector<SortedLine>& lines : block.lines) {
      lines.clear();
    }
    block.keys.clear();
    block.others.clear();
    block.line_count = 0;
  }

  void AddTrace(const TraceLine& trace) {
    Waiting& waiting = waiting_[count_];
    waiting.program = trace.program;
    waiting.number = trace.line;
    waiting.ticks = trace.ticks;
    waiting.hash = programs_.Prefetch(trace.program);
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

  // What the loop needs is not read from memory that a line may be written to.
  void AddWaiting() {
    std::vector<SortedLine>* const lines = block_.lines.data();
    const std::size_t parts = parts_;
    std::uint32_t place = block_.line_count;
    for (const Waiting& waiting : std::span(waiting_).first(std::exchange(count_, 0))) {
      SortedLine line{programs_.NumberOf(waiting.program, waiting.hash), waiting.number,
                      waiting.ticks, place++};
      if (line.program == SortedLine::kByText) {
        line.number = static_cast<std::uint32_t>(block_.keys.size());
        block_.keys.push_back({TraceHead(waiting.program), waiting.number});
      }
      lines[PartOfNumber(waiting.number, parts)].push_back(line);
    }
    block_.line_count = place;
  }

 private:
  struct Waiting {
    std::string_view program;
    std::uint32_t number;
    std::uint32_t ticks;
    std::uint32_t hash;
  };

  SortedBlock& block_;
  std::size_t parts_;
  ThreadPrograms& programs_;
  std::array<Waiting, 16> waiting_;
  std::size_t count_ = 0;
};

// Copies what the block's keys and other lines have of its text: its memory is for another block.
void KeepTexts(SortedBlock& block) {
  std::size_t size = 0;
  const auto for_each = [&block](const auto& visit) {
    for (MergeKey& key : block.keys) {
      visit(key.head);
    }
    for (MergeLine& line : block.others) {
      visit(line.key.head);
      visit(line.value);
    }
  };
  for_each([&size](std::string_view text) { size += text.size(); });
  if (size > block.texts.size()) {
    block.texts.Grow(size, 0);
  }
  char* to = block.texts.data();
  for_each([&to](std::string_view& text) {
    text = {to, text.copy(to, text.size())};
    to += text.size();
  });
}

}  // namespace

std::size_t PartOf(const MergeKey& key, std::size_t parts) {
  const bool has_number = key.number != MergeKey::kNoNumber;
  return PartOfNumber(has_number ? key.number : HashName(key.head, ProcessSecret()), parts);
}

void SortByParts(std::string_view block, std::size_t parts, ThreadPrograms& programs,
                 SortedBlock& sorted) {
  Sorting sorting(sorted, parts, programs);
  const char* line = block.data();
  const char* const end = line + block.size();
  while (line != end) {
    if (const TraceLine trace = ScanTraceLine(line); trace.next != nullptr) {
      sorting.AddTrace(trace);
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
  sorted.program_count = programs.size();
  KeepTexts(sorted);
}

}  // namespace ptick
