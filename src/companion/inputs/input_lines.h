// The lines of one input, and where in it they are.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>

#include "companion/problem.h"
#include "companion/progress.h"
#include "platform/record_file.h"
#include "records/line_blocks.h"
#include "value/byte_buffer.h"

namespace ptick::companion {

/// Reads an input front to back, once. A byte 254 ends a line for those who read profiles, but not
/// for the user's editor: messages count lines by LF.
class InputLines final : public LineBlocks {
 public:
  /// `name` is what messages call the input.
  InputLines(std::unique_ptr<RecordReader> reader, std::string name, Progress& progress,
             std::size_t block_size = std::size_t{256} * 1024);

  /// Throws Trouble where reading fails.
  std::string_view Next() override;
  /// The same in exchange for other memory, as RecordBlocks::NextInto.
  std::string_view NextInto(ByteBuffer& block);

  /// What is wrong when the block handed out last holds a record of no known type: its first one is
  /// told, which is the `line`-th line of all blocks, counted from 1.
  Trouble UnknownRecordIn(std::string_view block, std::uint64_t line) const;

 private:
  std::string_view Took(std::string_view block);

  std::string name_;
  /// Where the bytes 254 are in the input, but for those before the block that was handed out last.
  std::deque<std::uint64_t> marks_;
  std::uint64_t marks_before_block_ = 0;
  std::uint64_t block_begin_ = 0;
  std::uint64_t block_end_ = 0;
  RecordBlocks blocks_;
};

}  // namespace ptick::companion
