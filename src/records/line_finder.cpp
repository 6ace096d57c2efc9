#include "records/line_finder.h"

#include "records/line_ends.h"

namespace ptick {

namespace {

// Walks through the text of one record, block by block.
class Walk {
 public:
  Walk(std::span<const std::uint32_t> lines, std::size_t first, LineSink& sink)
      : lines_(lines), first_(first), sink_(sink) {}

  // kLineEndsPadding bytes after the block are readable.
  void Take(std::string_view block) {
    const char* at = block.data();
    const char* const end = at + block.size();
    while (at != end && found_ < lines_.size()) {
      at = line_ < lines_[found_] ? SkipTo(lines_[found_], at, end) : TakeLine(at, end);
    }
    last_byte_ = block.back();
  }

  // The number of lines found. A last line without an end is a line, too; after a field mark even
  // an empty one.
  std::size_t AtEnd() {
    if (found_ < lines_.size() && line_ == lines_[found_] && last_byte_ != '\n') {
      sink_.Take(first_ + found_, {});
      ++found_;
    }
    return found_;
  }

 private:
  const char* SkipTo(std::uint64_t line, const char* at, const char* end) {
    std::uint64_t count = line - line_;
    at = SkipLines(at, end, count);
    line_ = line - count;
    return at;
  }

  const char* TakeLine(const char* at, const char* end) {
    std::uint64_t count = 1;
    const char* const next = SkipLines(at, end, count);
    const bool has_end = count == 0;
    const auto size = static_cast<std::size_t>(next - at) - (has_end ? 1 : 0);
    sink_.Take(first_ + found_, {at, size});
    if (has_end) {
      ++line_;
      ++found_;
    }
    return next;
  }

  std::span<const std::uint32_t> lines_;
  std::size_t first_;
  LineSink& sink_;
  std::size_t found_ = 0;
  std::uint64_t line_ = 1;  ///< the number of the line that comes next, or goes on
  char last_byte_ = '\n';
};

}  // namespace

LineFinder::LineFinder(std::size_t block_size)
    : block_size_(block_size), buffer_(block_size + kLineEndsPadding) {}

std::size_t LineFinder::Find(RecordReader& record, std::span<const std::uint32_t> lines,
                             std::size_t first, LineSink& sink) {
  Walk walk(lines, first, sink);
  for (;;) {
    const std::optional<std::size_t> size = record.Read({buffer_.data(), block_size_});
    if (!size) {
      sink.Forget(first);
      return 0;
    }
    if (*size == 0) {
      return walk.AtEnd();
    }
    walk.Take({buffer_.data(), *size});
  }
}

}  // namespace ptick
