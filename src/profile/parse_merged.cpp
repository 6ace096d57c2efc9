#include "profile/parse_merged.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "parallel/piece_work.h"
#include "profile/parse/record_parser.h"
#include "profile/parse/trace_lines.h"
#include "profile/ticks/tick_part.h"
#include "profile/trace_keys.h"
#include "records/line_blocks.h"

namespace ptick {

namespace {

/// So much text is parsed at a time.
constexpr std::size_t kBlockSize = std::size_t{256} * 1024;

// Takes keys in their order. What is no usual trace entry becomes lines, and those are handed to
// `parse`, with the number of keys before them, before the next trace entry is taken. Returns the
// number of keys.
template <typename Parse>
std::int64_t TakeKeys(MergedKeys::Walk walk, TraceKeys& traces, const Parse& parse) {
  std::int64_t count = 0;
  std::string text;
  std::int64_t before_text = 0;
  const auto parse_text = [&] {
    if (!text.empty()) {
      const std::size_t size = text.size();
      text.append(kBlockPadding, '\0');
      parse(std::string_view(text).substr(0, size), before_text);
      text.clear();
    }
  };
  for (MergedKey key = walk.Next(); key.values != nullptr; key = walk.Next(), ++count) {
    if (!traces.Take(key, parse_text)) {
      before_text = text.empty() ? count : before_text;
      key.AppendLine(text);
      if (text.size() >= kBlockSize) {
        parse_text();
      }
    }
  }
  parse_text();
  return count;
}

std::optional<ReadProblem> ParseAlone(const MergedKeys& keys, const ReadOptions& options,
                                      ProfileTables& tables) {
  RecordParser parser(options, tables);
  TraceKeys traces(keys, tables.Details);
  bool has_problem = false;
  TakeKeys({keys, 0, keys.LotCount()}, traces, [&](std::string_view lines, std::int64_t before) {
    if (!has_problem) {
      parser.SetLineNo(before);
      has_problem = !parser.ParseBlock(lines);
    }
  });
  return has_problem ? std::optional(parser.Problem()) : std::nullopt;
}

/// Lots of keys as pieces of work.
class SharedKeys final : public PieceWork {
 public:
  SharedKeys(const MergedKeys& keys, RecordParser& parser, unsigned threads)
      : keys_(keys), parser_(parser), pieces_(SlotsFor(threads)) {
    for (unsigned thread = 0; thread < threads; ++thread) {
      shares_.push_back(std::make_unique<Share>(keys));
    }
  }

  bool Begin(std::size_t slot) override {
    Piece& piece = pieces_[slot];
    piece.begin_lot = next_lot_;
    const std::size_t before = keys_.CountBefore(next_lot_);
    while (next_lot_ < keys_.LotCount() && next_lot_ < piece.begin_lot + kLots &&
           keys_.CountBefore(next_lot_) - before < kKeys) {
      ++next_lot_;
    }
    piece.end_lot = next_lot_;
    piece.run = ++runs_;
    return piece.begin_lot < piece.end_lot;
  }

  void Do(std::size_t slot, unsigned thread) override {
    Piece& piece = pieces_[slot];
    Share& share = *shares_[thread];
    piece.text.clear();
    piece.others.clear();
    const MergedKeys::Walk walk(keys_, piece.begin_lot, piece.end_lot);
    piece.line_count =
        TakeKeys(walk, share.traces, [&](std::string_view lines, std::int64_t before) {
          TakeTraceLines(lines, share.ticks.Table(), share.others);
          for (const LineRange& other : share.others) {
            piece.others.push_back({other.lines, before + other.lines_before});
            piece.text += other.lines;
          }
        });
    piece.text.append(kBlockPadding, '\0');
    const char* lines = piece.text.data();  // which has grown to its end only now
    for (LineRange& other : piece.others) {
      other.lines = {lines, other.lines.size()};
      lines += other.lines.size();
    }
    share.ticks.EndRun(piece.run);
  }

  bool Finish(std::size_t slot) override {
    const Piece& piece = pieces_[slot];
    has_problem_ = !parser_.ParseOthers(piece.others, piece.line_count);
    return !has_problem_;
  }

  bool HasProblem() const { return has_problem_; }

  /// The trace entries, one part per thread.
  std::vector<TickPart> TakeTicks() {
    std::vector<TickPart> parts;
    parts.reserve(shares_.size());
    for (const std::unique_ptr<Share>& share : shares_) {
      parts.push_back(std::move(share->ticks));
    }
    return parts;
  }

 private:
  /// So many keys are a piece, and so many lots at most: that bounds their text.
  static constexpr std::size_t kKeys = std::size_t{1} << 13U;
  static constexpr std::size_t kLots = 4;

  struct Piece {
    std::size_t begin_lot = 0;
    std::size_t end_lot = 0;
    std::uint32_t run = 0;
    std::int64_t line_count = 0;
    std::string text;  ///< of the lines that are no trace entries
    std::vector<LineRange> others;
  };

  /// What one thread has, on cache lines of its own.
  struct alignas(64) Share {
    explicit Share(const MergedKeys& keys) : traces(keys, ticks.Table()) {}

    TickPart ticks;
    TraceKeys traces;
    std::vector<LineRange> others;
  };

  const MergedKeys& keys_;
  RecordParser& parser_;
  std::size_t next_lot_ = 0;
  std::uint32_t runs_ = 0;
  bool has_problem_ = false;
  std::vector<Piece> pieces_;                   ///< by slot
  std::vector<std::unique_ptr<Share>> shares_;  ///< by thread
};

}  // namespace

std::optional<ReadProblem> ParseMerged(const MergedKeys& keys, const ReadOptions& options,
                                       ProfileTables& tables) {
  const ThreadPlan& plan = options.threads;
  if (plan.threads <= 1 || keys.CountBefore(keys.LotCount()) < plan.rows_alone) {
    return ParseAlone(keys, options, tables);
  }
  RecordParser parser(options, tables);
  SharedKeys shared(keys, parser, plan.threads);
  DoInOrder(shared, plan.threads);
  if (shared.HasProblem()) {
    return parser.Problem();
  }
  JoinTicks(tables.Details, shared.TakeTicks());
  return std::nullopt;
}

}  // namespace ptick
