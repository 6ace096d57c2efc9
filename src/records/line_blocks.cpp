#include "records/line_blocks.h"

#include <cstring>
#include <optional>
#include <span>
#include <utility>

#include "value/dynamic_array.h"

namespace ptick {

namespace {

// After what has been read there is room for the end of an unended last line, and the padding.
constexpr std::size_t kReserve = kBlockPadding + 1;

// Field marks are rare: one search of the whole range, then a step per mark.
void TurnFieldMarksIntoLineEnds(char* begin, const char* end) {
  while (begin != end) {
    void* mark = std::memchr(begin, static_cast<unsigned char>(kFieldMark),
                             static_cast<std::size_t>(end - begin));
    if (mark == nullptr) {
      return;
    }
    begin = static_cast<char*>(mark);
    *begin++ = '\n';
  }
}

}  // namespace

std::optional<std::string_view> ReadLinesInto(RecordReader& record, ByteBuffer& memory) {
  std::size_t size = 0;
  for (;;) {
    if (memory.size() <= size + kReserve) {
      memory.Grow(2 * (size + kReserve), size);
    }
    char* const fresh = memory.data() + size;
    const std::optional<std::size_t> got = record.Read({fresh, memory.size() - kReserve - size});
    if (!got) {
      return std::nullopt;
    }
    if (*got == 0) {
      break;
    }
    TurnFieldMarksIntoLineEnds(fresh, fresh + *got);
    size += *got;
  }
  if (size > 0 && memory.data()[size - 1] != '\n') {
    memory.data()[size++] = '\n';
  }
  std::memset(memory.data() + size, 0, kBlockPadding);
  return std::string_view(memory.data(), size);
}

RecordBlocks::RecordBlocks(std::unique_ptr<RecordReader> record, std::size_t block_size)
    : record_(std::move(record)), buffer_(block_size + kReserve) {}

std::string_view RecordBlocks::Next() { return NextOf(1); }

// Reads at least so many bytes, where there are as many, before it hands out lines.
std::string_view RecordBlocks::NextOf(std::size_t least) {
  std::size_t unfinished = end_ - begin_;
  while (!at_end_) {
    ReadMore();
    if (end_ < least && !at_end_) {
      continue;
    }
    const std::string_view read(buffer_.data(), end_);
    const std::size_t last = read.substr(unfinished).rfind('\n');
    if (last != std::string_view::npos) {
      begin_ = unfinished + last + 1;
      return read.substr(0, begin_);
    }
    unfinished = end_;
  }
  if (failed_ || begin_ == end_) {
    return {};
  }
  buffer_.data()[end_++] = '\n';
  const std::string_view block(buffer_.data() + begin_, end_ - begin_);
  begin_ = end_;
  return block;
}

// What has been read of the next line moves on to the other buffer. A pipe gives little at a time,
// but a block that is handed on is worth the way.
std::string_view RecordBlocks::NextInto(ByteBuffer& block) {
  const std::string_view next = NextOf(buffer_.size() - kReserve);
  const std::size_t unfinished = end_ - begin_;
  if (block.size() < unfinished + kReserve) {
    block.Grow(buffer_.size(), 0);
  }
  std::memcpy(block.data(), buffer_.data() + begin_, unfinished);
  std::memset(block.data() + unfinished, 0, kReserve);
  std::swap(block, buffer_);
  begin_ = 0;
  end_ = unfinished;
  return next;
}

void RecordBlocks::StartOver(std::unique_ptr<RecordReader> record) {
  record_ = std::move(record);
  begin_ = end_ = 0;
  read_ = 0;
  at_end_ = failed_ = false;
}

// Moves the unfinished line to the front of the buffer and reads more after it.
void RecordBlocks::ReadMore() {
  if (begin_ > 0) {
    end_ -= begin_;
    std::memmove(buffer_.data(), buffer_.data() + begin_, end_);
    begin_ = 0;
  }
  if (end_ + kReserve >= buffer_.size()) {
    buffer_.Grow(2 * buffer_.size(), end_);
  }
  const std::span<char> room(buffer_.data() + end_, buffer_.size() - kReserve - end_);
  const std::optional<std::size_t> size = record_->Read(room);
  if (!size || *size == 0) {
    at_end_ = true;
    failed_ = !size;
    return;
  }
  read_ += *size;
  char* fresh = buffer_.data() + end_;
  TurnFieldMarksIntoLineEnds(fresh, fresh + *size);
  end_ += *size;
  // Scanners load bytes past the end: clear them, so that no run depends on stale ones.
  std::memset(fresh + *size, 0, kReserve);
}

}  // namespace ptick
