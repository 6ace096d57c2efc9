#include "records/record_range.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

#include "value/dynamic_array.h"

namespace ptick {

namespace {

// So much is read at once of a last line that goes on after the range. Nearly all are shorter.
constexpr std::uint64_t kAfterRange = 4096;

// How many bytes the first line in `text` takes with its end; nothing where it does not end there.
std::optional<std::size_t> FirstLineIn(std::span<const char> text) {
  const auto place_of = [&text](char byte, std::size_t most) {
    const void* const found = std::memchr(text.data(), static_cast<unsigned char>(byte), most);
    return found == nullptr
               ? most
               : static_cast<std::size_t>(static_cast<const char*>(found) - text.data());
  };
  const std::size_t line_feed = place_of('\n', text.size());
  const std::size_t end = place_of(kFieldMark, line_feed);
  return end == text.size() ? std::nullopt : std::optional(end + 1);
}

bool EndsLine(char byte) { return byte == '\n' || byte == kFieldMark; }

}  // namespace

std::optional<ByteRange> RecordRanges::Next() {
  if (has_given_last_) {
    return std::nullopt;
  }
  has_given_last_ = size_ - next_ <= range_size_;
  const std::uint64_t end =
      has_given_last_ ? std::numeric_limits<std::uint64_t>::max() : next_ + range_size_;
  return ByteRange{std::exchange(next_, end), end};
}

// Whether a line begins where the range does is told by the byte before.
RecordRange::RecordRange(const RecordReader& record, const ByteRange& range)
    : record_(record),
      at_(range.begin - (range.begin > 0 ? 1 : 0)),
      end_(range.end),
      is_before_lines_(range.begin > 0) {}

std::optional<std::size_t> RecordRange::Read(std::span<char> block) {
  std::size_t kept = 0;
  while (kept == 0 && !has_ended_) {
    const std::uint64_t most = at_ < end_ ? end_ - at_ : kAfterRange;
    const auto size = static_cast<std::size_t>(std::min<std::uint64_t>(block.size(), most));
    const std::optional<std::size_t> got = record_.ReadAt(at_, block.first(size), error_);
    if (!got) {
      return std::nullopt;
    }
    at_ += *got;
    kept = Keep(block.first(*got));
  }
  return kept;
}

// Moves what belongs to the lines of the range to the front and returns its size.
std::size_t RecordRange::Keep(std::span<char> read) {
  if (read.empty()) {
    has_ended_ = true;
    return 0;
  }
  const bool ends_line = EndsLine(read.back());
  if (at_ > end_) {
    const std::optional<std::size_t> rest = FirstLineIn(read);
    has_ended_ = rest.has_value();
    return rest.value_or(read.size());
  }
  std::size_t before = 0;
  if (is_before_lines_) {
    const std::optional<std::size_t> line = FirstLineIn(read);
    is_before_lines_ = !line;
    before = line.value_or(read.size());
    std::memmove(read.data(), read.data() + before, read.size() - before);
  }
  has_ended_ = at_ == end_ && (is_before_lines_ || ends_line);
  return read.size() - before;
}

}  // namespace ptick
