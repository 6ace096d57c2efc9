#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "platform/record_file.h"
#include "value/byte_buffer.h"

namespace ptick {

/// How many bytes after the end of a block may be read, so that scanners can load whole words.
inline constexpr std::size_t kBlockPadding = 64;

/// Profile text as a sequence of blocks of whole lines.
class LineBlocks {
 public:
  LineBlocks() = default;
  LineBlocks(const LineBlocks&) = delete;
  LineBlocks& operator=(const LineBlocks&) = delete;
  virtual ~LineBlocks() = default;

  /// The next block, valid until the next call; empty at the end. Every line in it ends with LF,
  /// and kBlockPadding readable bytes follow.
  virtual std::string_view Next() = 0;
};

/// Reads a record to its end and puts all of its lines into `memory`, as a block. Nothing when
/// reading fails.
std::optional<std::string_view> ReadLinesInto(RecordReader& record, ByteBuffer& memory);

/// The lines of a record, read front to back in large blocks. A line ends at LF or at a field mark,
/// which is turned into an LF; the last line may lack its end.
class RecordBlocks final : public LineBlocks {
 public:
  /// Blocks are of about `block_size` bytes; a longer line makes a longer block.
  explicit RecordBlocks(std::unique_ptr<RecordReader> record,
                        std::size_t block_size = std::size_t{256} * 1024);

  std::string_view Next() override;

  /// The same, but the block is full, however little a read gives, and is put into `block`, in
  /// exchange for the memory that was there; it is valid as long as that.
  std::string_view NextInto(ByteBuffer& block);

  /// Goes on with another record, in the same memory.
  void StartOver(std::unique_ptr<RecordReader> record);

  /// Where in the record the lines begin that have not been handed out.
  std::uint64_t Place() const { return read_ - (end_ - begin_); }

  /// How many bytes are known to come after that place.
  std::uint64_t SizeAhead() const {
    const std::uint64_t size = record_->Size().value_or(0);
    return size > Place() ? size - Place() : 0;
  }

  const RecordReader& Record() const { return *record_; }

  /// Whether reading failed before the end; Next has returned an empty block then.
  bool Failed() const { return failed_; }

  /// The system's error number, when reading has failed.
  int Error() const { return record_->Error(); }

  /// Whether the record gives the same lines when it is opened again.
  bool CanBeReadAgain() const { return record_->CanBeReadAgain(); }

 private:
  std::string_view NextOf(std::size_t least);
  void ReadMore();

  std::unique_ptr<RecordReader> record_;
  ByteBuffer buffer_;
  std::size_t begin_ = 0;  ///< of what has been read but not handed out
  std::size_t end_ = 0;
  std::uint64_t read_ = 0;  ///< bytes of the record
  bool at_end_ = false;
  bool failed_ = false;
};

}  // namespace ptick
