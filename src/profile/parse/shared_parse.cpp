#include "profile/parse/shared_parse.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "parallel/piece_work.h"
#include "profile/parse/record_parser.h"
#include "profile/parse/trace_lines.h"
#include "profile/ticks/tick_part.h"

namespace ptick {

namespace {

/// The blocks of a record as pieces of work.
class SharedParse final : public PieceWork {
 public:
  SharedParse(RecordBlocks& lines, RecordParser& parser, unsigned threads)
      : lines_(lines), parser_(parser), slots_(SlotsFor(threads)), shares_(threads) {}

  bool Begin(std::size_t slot) override {
    Block& block = slots_[slot];
    block.text = lines_.NextInto(block.memory);
    block.run = ++runs_;
    return !block.text.empty();
  }

  void Do(std::size_t slot, unsigned thread) override {
    Block& block = slots_[slot];
    Share& share = shares_[thread];
    block.line_count = TakeTraceLines(block.text, share.ticks.Table(), block.others);
    share.ticks.EndRun(block.run);
  }

  bool Finish(std::size_t slot) override {
    const Block& block = slots_[slot];
    has_problem_ = !parser_.ParseOthers(block.others, block.line_count);
    return !has_problem_;
  }

  bool HasProblem() const { return has_problem_; }

  /// The trace entries, one part per thread.
  std::vector<TickPart> TakeTicks() {
    std::vector<TickPart> parts;
    parts.reserve(shares_.size());
    for (Share& share : shares_) {
      parts.push_back(std::move(share.ticks));
    }
    return parts;
  }

 private:
  struct Block {
    ByteBuffer memory;
    std::string_view text;
    std::uint32_t run = 0;
    std::int64_t line_count = 0;
    std::vector<LineRange> others;
  };

  /// What one thread has, on cache lines of its own.
  struct alignas(64) Share {
    TickPart ticks;
  };

  RecordBlocks& lines_;
  RecordParser& parser_;
  std::uint32_t runs_ = 0;
  bool has_problem_ = false;
  std::vector<Block> slots_;
  std::vector<Share> shares_;
};

}  // namespace

std::optional<ReadProblem> ParseRecordLines(RecordBlocks& lines, const ReadOptions& options,
                                            ProfileTables& tables) {
  const ThreadPlan& plan = options.threads;
  RecordParser parser(options, tables);
  std::size_t parsed = 0;
  while (plan.threads <= 1 || parsed < plan.bytes_alone) {
    const std::string_view block = lines.Next();
    if (block.empty()) {
      return std::nullopt;
    }
    if (!parser.ParseBlock(block)) {
      return parser.Problem();
    }
    parsed += block.size();
  }
  SharedParse shared(lines, parser, plan.threads);
  DoInOrder(shared, plan.threads);
  if (shared.HasProblem()) {
    return parser.Problem();
  }
  JoinTicks(tables.Details, shared.TakeTicks());
  return std::nullopt;
}

}  // namespace ptick
