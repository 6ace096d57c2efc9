#pragma once

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
