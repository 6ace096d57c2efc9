#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "platform/record_file.h"

namespace ptick {

/// The bytes of a record from `begin` to before `end`.
struct ByteRange {
  std::uint64_t begin = 0;
  std::uint64_t end = 0;
};

/// The rest of a record in ranges that follow each other. There is always a last one, and it ends
/// with the record: a file may grow, and files of the system say that they have no bytes.
class RecordRanges {
 public:
  /// From `begin` on, in a record that says that it has `size` bytes.
  RecordRanges(std::uint64_t begin, std::uint64_t size, std::uint64_t range_size)
      : next_(begin), size_(std::max(begin, size)), range_size_(range_size) {}

  /// The next one; nothing after the last.
  std::optional<ByteRange> Next();

 private:
  std::uint64_t next_;
  std::uint64_t size_;
  std::uint64_t range_size_;
  bool has_given_last_ = false;
};

/// The lines that begin in a range of a record, as a record of their own. The last one is read to
/// its end, wherever that is: ranges that follow each other have every line once, so that several
/// threads can read a record.
class RecordRange final : public RecordReader {
 public:
  /// `record` can be read at any place, and outlives this. A line begins where it begins.
  RecordRange(const RecordReader& record, const ByteRange& range);

  std::optional<std::size_t> Read(std::span<char> block) override;
  int Error() const override { return error_; }

 private:
  std::size_t Keep(std::span<char> read);

  const RecordReader& record_;
  std::uint64_t at_;  ///< the place to be read next
  std::uint64_t end_;
  bool is_before_lines_;  ///< no line of the range has begun yet
  bool has_ended_ = false;
  int error_ = 0;
};

}  // namespace ptick
