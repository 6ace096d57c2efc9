#include "companion/inputs/input_lines.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <optional>
#include <span>
#include <utility>

#include "companion/inputs/record_message.h"
#include "profile/parse/unknown_record.h"
#include "value/dynamic_array.h"

namespace ptick::companion {

namespace {

/// Tells the progress what is read, and notes where field marks are.
class WatchedReader final : public RecordReader {
 public:
  WatchedReader(std::unique_ptr<RecordReader> reader, Progress& progress,
                std::deque<std::uint64_t>& marks)
      : reader_(std::move(reader)), progress_(progress), marks_(marks) {}

  std::optional<std::size_t> Read(std::span<char> block) override {
    const std::optional<std::size_t> size = reader_->Read(block);
    if (size) {
      NoteMarks(block.first(*size));
      bytes_read_ += *size;
      progress_.Add(*size);
    }
    return size;
  }
  int Error() const override { return reader_->Error(); }
  bool CanBeReadAgain() const override { return reader_->CanBeReadAgain(); }

 private:
  void NoteMarks(std::span<const char> bytes) {
    const char* at = bytes.data();
    const char* const end = at + bytes.size();
    while (at != end) {
      const void* const mark = std::memchr(at, static_cast<unsigned char>(kFieldMark),
                                           static_cast<std::size_t>(end - at));
      if (mark == nullptr) {
        return;
      }
      at = static_cast<const char*>(mark);
      marks_.push_back(bytes_read_ + static_cast<std::uint64_t>(at - bytes.data()));
      ++at;
    }
  }

  std::unique_ptr<RecordReader> reader_;
  Progress& progress_;
  std::deque<std::uint64_t>& marks_;
  std::uint64_t bytes_read_ = 0;
};

}  // namespace

InputLines::InputLines(std::unique_ptr<RecordReader> reader, std::string name, Progress& progress,
                       std::size_t block_size)
    : name_(std::move(name)),
      blocks_(std::make_unique<WatchedReader>(std::move(reader), progress, marks_), block_size) {}

std::string_view InputLines::Next() { return Took(blocks_.Next()); }

std::string_view InputLines::NextInto(ByteBuffer& block) { return Took(blocks_.NextInto(block)); }

std::string_view InputLines::Took(std::string_view block) {
  if (block.empty() && blocks_.Failed()) {
    throw Trouble(name_, blocks_.Error());
  }
  block_begin_ = block_end_;
  block_end_ += block.size();
  while (!marks_.empty() && marks_.front() < block_begin_) {
    marks_.pop_front();
    ++marks_before_block_;
  }
  return block;
}

Trouble InputLines::UnknownRecordIn(std::string_view block, std::uint64_t line) const {
  std::uint64_t ignored = 0;
  const std::optional<UnknownRecord> record = FindUnknownRecord(block, ignored);
  if (!record) {
    return Trouble({.file = name_, .line = line, .reason = "unknown record"});
  }
  const auto begin = block_begin_ + static_cast<std::uint64_t>(record->line.data() - block.data());
  const auto marks_in_block = std::ranges::lower_bound(marks_, begin) - marks_.begin();
  return Trouble({.file = name_,
                  .line = line - marks_before_block_ - static_cast<std::uint64_t>(marks_in_block),
                  .reason = UnknownRecordReason(*record)});
}

}  // namespace ptick::companion
