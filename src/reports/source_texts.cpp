#include "reports/source_texts.h"

#include <algorithm>
#include <limits>
#include <numeric>

#include "records/line_number.h"

namespace ptick {

namespace {

constexpr std::string_view kNotFound = "??";

// Takes in the lines of one source after the texts that are there.
class SourceSink final : public LineSink {
 public:
  explicit SourceSink(FittedTexts& texts) : texts_(texts), start_(texts.size()) {}

  void Take(std::size_t n, std::string_view piece) override {
    if (start_ + n == texts_.size()) {
      texts_.Begin();
    }
    texts_.Append(piece);
  }
  void Forget(std::size_t n) override { texts_.CutTo(start_ + n); }

 private:
  FittedTexts& texts_;
  std::size_t start_;
};

template <typename Visit>
void ForEachEntry(const OrderedTicks& ticks, Visit visit) {
  for (std::size_t row = 0; row < ticks.RowCount(); ++row) {
    ticks.ForEach(row, visit);
  }
}

void AppendNotFound(FittedTexts& texts) {
  texts.Begin();
  texts.Append(kNotFound);
}

}  // namespace

SourceTexts::SourceTexts(const OrderedTicks& ticks, std::span<const SourceFile> files,
                         std::int64_t width)
    : ticks_(ticks), texts_(width) {
  CollectLines();
  SortLines();
  ReadSources(files);
}

std::string_view SourceTexts::TextOf(const TickEntry& entry) const {
  const std::span<const std::uint32_t> lines = LinesOf(entry.program);
  const std::uint32_t line = LineOf(entry);
  const auto found = std::ranges::lower_bound(lines, line);
  const bool is_there = found != lines.end() && *found == line;
  return texts_[is_there ? starts_[entry.program] + static_cast<std::size_t>(found - lines.begin())
                         : lines_.size()];
}

// One counting sort by program.
void SourceTexts::CollectLines() {
  std::vector<std::size_t> places(ticks_.Programs().size() + 1);
  ForEachEntry(ticks_, [&](const TickEntry& entry) {
    if (LineOf(entry) != 0) {
      ++places[entry.program + 1];
    }
  });
  std::partial_sum(places.begin(), places.end(), places.begin());
  starts_ = places;
  lines_.resize(places.back());
  ForEachEntry(ticks_, [&](const TickEntry& entry) {
    if (const std::uint32_t line = LineOf(entry); line != 0) {
      lines_[places[entry.program]++] = line;
    }
  });
}

void SourceTexts::SortLines() {
  auto kept = lines_.begin();
  auto first = lines_.begin();
  for (std::size_t program = 0; program + 1 < starts_.size(); ++program) {
    const auto last = lines_.begin() + static_cast<std::ptrdiff_t>(starts_[program + 1]);
    std::sort(first, last);
    starts_[program] = static_cast<std::size_t>(kept - lines_.begin());
    const auto end = std::unique(first, last);
    kept = kept == first ? end : std::copy(first, end, kept);
    first = last;
  }
  lines_.erase(kept, lines_.end());
  lines_.shrink_to_fit();
  starts_.back() = lines_.size();
}

void SourceTexts::ReadSources(std::span<const SourceFile> files) {
  texts_.Reserve(lines_.size() + 1);
  SourceFinder finder(files);
  for (NameTable::Id program = 0; program < ticks_.Programs().size(); ++program) {
    SourceSink sink(texts_);
    const std::span<const std::uint32_t> lines = LinesOf(program);
    for (std::size_t n = finder.Find(ticks_.Programs()[program], lines, sink); n < lines.size();
         ++n) {
      AppendNotFound(texts_);
    }
  }
  AppendNotFound(texts_);
}

std::uint32_t SourceTexts::LineOf(const TickEntry& entry) const {
  return entry.HasExactText() ? SourceLineNumber(ticks_.ExactLine(entry)) : entry.line;
}

}  // namespace ptick
