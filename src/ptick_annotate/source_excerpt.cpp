#include "ptick_annotate/source_excerpt.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <numeric>

#include "records/line_count.h"
#include "records/line_finder.h"

namespace ptick::companion {

namespace {

// Of a source with more lines the rest is never shown.
constexpr std::uint64_t kMaxLines = std::numeric_limits<std::uint32_t>::max() - 1;

/// The lines that are shown of a source of `count` lines.
std::vector<std::uint32_t> ShownLines(std::span<const LineTicks> ticks, std::uint32_t count,
                                      const ExcerptOptions& options) {
  std::vector<std::uint32_t> lines;
  if (options.is_whole) {
    lines.resize(count);
    std::iota(lines.begin(), lines.end(), 1U);
    return lines;
  }
  std::uint32_t next = 1;
  for (const LineTicks& own : ticks) {
    if (own.line > count) {
      break;
    }
    const std::uint32_t before = std::min(options.context, own.line - 1);
    const std::uint32_t last = own.line + std::min(options.context, count - own.line);
    for (next = std::max(next, own.line - before); next <= last; ++next) {
      lines.push_back(next);
    }
  }
  return lines;
}

}  // namespace

/// Takes in the lines that were asked for.
class ExcerptSink final : public LineSink {
 public:
  explicit ExcerptSink(SourceExcerpt& excerpt) : excerpt_(excerpt) {}

  void Take(std::size_t n, std::string_view piece) override {
    if (n == excerpt_.starts_.size()) {
      excerpt_.starts_.push_back(excerpt_.text_.size());
    }
    excerpt_.text_ += piece;
  }
  void Forget(std::size_t n) override {
    if (n < excerpt_.starts_.size()) {
      excerpt_.text_.resize(excerpt_.starts_[n]);
      excerpt_.starts_.resize(n);
    }
  }

 private:
  SourceExcerpt& excerpt_;
};

std::optional<SourceExcerpt> SourceExcerpt::Find(std::string_view program,
                                                 std::span<const LineTicks> ticks,
                                                 const SourceFolders& folders,
                                                 const ExcerptOptions& options) {
  for (const SourceFile& folder : folders.Files()) {
    // Twice: which lines are shown depends on how many there are.
    const std::unique_ptr<RecordReader> counted = folder.file->OpenRegularRecord(program);
    const std::optional<std::uint64_t> count = counted ? CountLines(*counted) : std::nullopt;
    if (!count) {
      continue;
    }
    SourceExcerpt excerpt;
    excerpt.path_ = SourcePath(folder, program);
    excerpt.source_lines_ = static_cast<std::uint32_t>(std::min(*count, kMaxLines));
    excerpt.lines_ = ShownLines(ticks, excerpt.source_lines_, options);
    const std::unique_ptr<RecordReader> source = folder.file->OpenRegularRecord(program);
    if (!source) {
      continue;
    }
    ExcerptSink sink(excerpt);
    const std::size_t found = LineFinder().Find(*source, excerpt.lines_, 0, sink);
    if (found == excerpt.lines_.size()) {
      excerpt.starts_.push_back(excerpt.text_.size());
      return excerpt;
    }
    // It has just been cut or taken away: it is as if it could not be read.
  }
  return std::nullopt;
}

}  // namespace ptick::companion
