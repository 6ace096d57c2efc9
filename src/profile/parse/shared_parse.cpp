#include "profile/parse/shared_parse.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "parallel/piece_work.h"
#include "profile/parse/record_parser.h"
#include "profile/parse/shared_lines.h"
#include "profile/ticks/tick_part.h"
#include "records/open_record.h"
#include "records/record_range.h"
#include "value/byte_buffer.h"

namespace ptick {

namespace {

/// What can be read front to back alone: one thread at a time reads a block.
class SharedBlocks final : public SharedLines {
 public:
  SharedBlocks(RecordBlocks& lines, RecordParser& parser, unsigned threads)
      : SharedLines(parser, threads), lines_(lines), blocks_(SlotsFor(threads)) {}

  bool Begin(std::size_t slot) override {
    Block& block = blocks_[slot];
    block.text = lines_.NextInto(block.memory);
    BeginPiece(slot);
    return !block.text.empty();
  }

  void Do(std::size_t slot, unsigned thread) override {
    EndPiece(slot, thread, TakeLines(slot, thread, blocks_[slot].text, 0));
  }

 private:
  struct Block {
    ByteBuffer memory;
    std::string_view text;
  };

  RecordBlocks& lines_;
  std::vector<Block> blocks_;  ///< by slot
};

/// Ranges of a regular file: each is read by the thread that takes it, in memory that stays in the
/// cache of its processor.
class SharedRanges final : public SharedLines {
 public:
  /// Begins where `lines` have come to.
  SharedRanges(const RecordBlocks& lines, std::uint64_t size, RecordParser& parser,
               const ThreadPlan& plan)
      : SharedLines(parser, plan.threads),
        record_(lines.Record()),
        rest_(lines.Place(), size,
              std::clamp<std::uint64_t>(lines.SizeAhead() / (plan.threads * kRangesPerThread),
                                        plan.smallest_range, plan.largest_range)),
        block_size_(plan.block_size),
        ranges_(SlotsFor(plan.threads)),
        blocks_(plan.threads) {}

  bool Begin(std::size_t slot) override {
    const std::optional<ByteRange> bytes = rest_.Next();
    if (!bytes) {
      return false;
    }
    ranges_[slot].bytes = *bytes;
    BeginPiece(slot);
    return true;
  }

  void Do(std::size_t slot, unsigned thread) override {
    Range& range = ranges_[slot];
    RecordBlocks& blocks = Read(range.bytes, thread);
    std::int64_t count = 0;
    for (auto block = blocks.Next(); !block.empty(); block = blocks.Next()) {
      count += TakeLines(slot, thread, block, count);
    }
    range.error = blocks.Failed() ? std::optional(blocks.Error()) : std::nullopt;
    EndPiece(slot, thread, count);
  }

  bool Finish(std::size_t slot) override {
    const bool goes_on = SharedLines::Finish(slot);
    error_ = ranges_[slot].error;
    return goes_on && !error_;
  }

  /// The system's error number, when reading has failed.
  std::optional<int> Error() const { return error_; }

 private:
  /// At the end, some threads wait for one that is at its last range.
  static constexpr std::uint64_t kRangesPerThread = 16;

  struct alignas(64) Range {
    ByteRange bytes;
    std::optional<int> error;
  };

  RecordBlocks& Read(const ByteRange& range, unsigned thread) {
    std::unique_ptr<RecordBlocks>& blocks = blocks_[thread];
    auto record = std::make_unique<RecordRange>(record_, range);
    if (blocks == nullptr) {
      blocks = std::make_unique<RecordBlocks>(std::move(record), block_size_);
    } else {
      blocks->StartOver(std::move(record));
    }
    return *blocks;
  }

  const RecordReader& record_;
  RecordRanges rest_;
  std::size_t block_size_;
  std::optional<int> error_;
  std::vector<Range> ranges_;                          ///< by slot
  std::vector<std::unique_ptr<RecordBlocks>> blocks_;  ///< by thread
};

// Nothing when all was read and no line is of an unknown type.
std::optional<ReadProblem> ShareBlocks(RecordBlocks& lines, RecordParser& parser,
                                       const ThreadPlan& plan, TickTable& ticks) {
  SharedBlocks shared(lines, parser, plan.threads);
  DoInOrder(shared, plan.threads);
  if (shared.HasProblem()) {
    return parser.Problem();
  }
  JoinTicks(ticks, shared.TakeTicks());
  return std::nullopt;
}

std::optional<ReadProblem> ShareRanges(const RecordBlocks& lines, std::uint64_t size,
                                       RecordParser& parser, const ThreadPlan& plan,
                                       TickTable& ticks) {
  SharedRanges shared(lines, size, parser, plan);
  DoInOrder(shared, plan.threads);
  if (const std::optional<int> error = shared.Error()) {
    return UnreadableRecord("", *error);
  }
  if (shared.HasProblem()) {
    return parser.Problem();
  }
  JoinTicks(ticks, shared.TakeTicks());
  return std::nullopt;
}

}  // namespace

std::optional<ReadProblem> ParseRecordLines(RecordBlocks& lines, const ReadOptions& options,
                                            ProfileTables& tables) {
  const ThreadPlan& plan = options.threads;
  RecordParser parser(options, tables);
  std::size_t parsed = 0;
  while (plan.threads <= 1 || parsed + lines.SizeAhead() < plan.bytes_alone) {
    const std::string_view block = lines.Next();
    if (block.empty()) {
      return std::nullopt;
    }
    if (!parser.ParseBlock(block)) {
      return parser.Problem();
    }
    parsed += block.size();
  }
  if (const std::optional<std::uint64_t> size = lines.Record().Size()) {
    return ShareRanges(lines, *size, parser, plan, tables.Details);
  }
  return ShareBlocks(lines, parser, plan, tables.Details);
}

}  // namespace ptick
