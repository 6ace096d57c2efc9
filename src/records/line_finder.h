#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "platform/record_file.h"
#include "value/byte_buffer.h"

namespace ptick {

/// Takes in lines that were asked for by their numbers, as they are found.
class LineSink {
 public:
  LineSink() = default;
  LineSink(const LineSink&) = delete;
  LineSink& operator=(const LineSink&) = delete;
  virtual ~LineSink() = default;

  /// A piece of the n-th line asked for, counted from 0, without its end. A line comes in one piece
  /// or several, which follow each other; an empty one in an empty piece. Lines come in order.
  virtual void Take(std::size_t n, std::string_view piece) = 0;

  /// The lines from the n-th on count as not found: the record that gave them could not be read to
  /// its end.
  virtual void Forget(std::size_t n) = 0;
};

/// Finds lines of records by their numbers in one pass, without keeping the text: memory does not
/// grow with records or lines.
class LineFinder {
 public:
  /// Blocks of that many bytes are read.
  explicit LineFinder(std::size_t block_size = std::size_t{64} * 1024);

  /// Reads a record to its end and hands the lines of these numbers, ascending from 1, to `sink`.
  /// The first is its `first`-th line. Returns how many of them the record has: the others are past
  /// its end. A record that cannot be read to its end has none.
  std::size_t Find(RecordReader& record, std::span<const std::uint32_t> lines, std::size_t first,
                   LineSink& sink);

 private:
  std::size_t block_size_;
  ByteBuffer buffer_;
};

}  // namespace ptick
