#include "profile/merge_inputs.h"

#include <algorithm>
#include <span>
#include <utility>

#include "records/open_record.h"

namespace ptick {

namespace {

// Room for the end of a last line that goes on after its range: nearly always enough.
constexpr std::size_t kLastLine = std::size_t{8} * 1024;

}  // namespace

/// While there is one, a range is being read.
class MergeInputs::Reading {
 public:
  explicit Reading(MergeInputs& inputs) : inputs_(inputs) {}
  Reading(const Reading&) = delete;
  Reading& operator=(const Reading&) = delete;
  ~Reading() {
    {
      const std::scoped_lock lock(inputs_.mutex_);
      --inputs_.being_read_;
    }
    inputs_.read_.notify_one();
  }

 private:
  MergeInputs& inputs_;
};

std::string_view MergeInputs::Next() {
  while (IsOpen()) {
    if (const std::string_view block = lines_->Next(); !block.empty()) {
      gave_some_ = true;
      return block;
    }
    Close();
  }
  return {};
}

bool MergeInputs::Begin(MergeText& text) {
  for (; IsOpen(); Close()) {
    if (BeginPiece(text)) {
      gave_some_ = true;
      return true;
    }
  }
  return false;
}

// False at the end of the input, or where it has failed: nobody reads in it any more then. The
// first piece is a block in any case: an input that fails before that has given nothing.
bool MergeInputs::BeginPiece(MergeText& text) {
  if (!ranges_ && gave_some_ && lines_->SizeAhead() > 2 * block_size_) {
    ranges_.emplace(lines_->Place(), lines_->Place() + lines_->SizeAhead(), block_size_);
  }
  if (!ranges_) {
    text.block = lines_->NextInto(text.memory);
    text.size = text.block.size();
    return !text.block.empty();
  }
  std::unique_lock lock(mutex_);
  const std::optional<ByteRange> range = failure_ ? std::nullopt : ranges_->Next();
  if (!range) {
    read_.wait(lock, [this] { return being_read_ == 0; });
    return false;
  }
  text.block = {};
  text.range = *range;
  text.size = block_size_;
  ++being_read_;
  return true;
}

void MergeInputs::Read(MergeText& text) {
  if (!text.block.empty()) {
    return;
  }
  const Reading reading(*this);
  if (text.memory.size() < block_size_ + kLastLine) {
    text.memory.Grow(block_size_ + kLastLine, 0);
  }
  RecordRange record(lines_->Record(), text.range);
  const std::optional<std::string_view> block = ReadLinesInto(record, text.memory);
  text.block = block.value_or("");
  if (!block) {
    const std::scoped_lock lock(mutex_);
    const Failure failure{text.range.begin, record.Error()};
    failure_ = failure_ ? std::ranges::min(*failure_, failure, {}, &Failure::place) : failure;
  }
}

std::uint64_t MergeInputs::SizeAhead() { return IsOpen() ? lines_->SizeAhead() : 0; }

bool MergeInputs::IsSpent() const {
  return std::ranges::any_of(std::span(inputs_).first(input_), [](const MergeInput& before) {
    return !before.is_left_out && !before.can_be_read_again;
  });
}

// Opens the next input that can be opened.
bool MergeInputs::Open() {
  for (; input_ < inputs_.size(); ++input_) {
    MergeInput& input = inputs_[input_];
    ReadProblem problem;
    if (input.is_left_out) {
      continue;
    }
    if (auto record = OpenNamedRecord(*input.name, files_, problem)) {
      lines_.emplace(std::move(record), block_size_);
      input.can_be_read_again = lines_->CanBeReadAgain();
      gave_some_ = false;
      return true;
    }
    input.is_left_out = true;
    tell_(problem);
  }
  return false;
}

// At the end of an input, or where it has failed.
void MergeInputs::Close() {
  MergeInput& input = inputs_[input_];
  if (lines_->Failed() || failure_) {
    input.is_left_out = true;
    has_broken_off_ = gave_some_;
    tell_(UnreadableRecord(*input.name, failure_ ? failure_->error : lines_->Error()));
  } else if (first_name_.empty()) {
    first_name_ = *input.name;
  }
  lines_.reset();
  ranges_.reset();
  failure_.reset();
  input_ += has_broken_off_ ? 0 : 1;
}

}  // namespace ptick
