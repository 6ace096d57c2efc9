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
#include "profile/parse/shared_lines.h"
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
class SharedKeys final : public SharedLines {
 public:
  SharedKeys(const MergedKeys& keys, RecordParser& parser, unsigned threads)
      : SharedLines(parser, threads), keys_(keys), pieces_(SlotsFor(threads)) {
    for (unsigned thread = 0; thread < threads; ++thread) {
      traces_.push_back(std::make_unique<TraceKeys>(keys, Ticks(thread)));
    }
  }

  bool Begin(std::size_t slot) override {
    Lots& lots = pieces_[slot];
    lots.begin = next_lot_;
    const std::size_t before = keys_.CountBefore(next_lot_);
    while (next_lot_ < keys_.LotCount() && next_lot_ < lots.begin + kLots &&
           keys_.CountBefore(next_lot_) - before < kKeys) {
      ++next_lot_;
    }
    lots.end = next_lot_;
    BeginPiece(slot);
    return lots.begin < lots.end;
  }

  void Do(std::size_t slot, unsigned thread) override {
    const Lots& lots = pieces_[slot];
    const MergedKeys::Walk walk(keys_, lots.begin, lots.end);
    const auto take = [&](std::string_view lines, std::int64_t before) {
      TakeLines(slot, thread, lines, before);
    };
    EndPiece(slot, thread, TakeKeys(walk, *traces_[thread], take));
  }

 private:
  /// So many keys are a piece, and so many lots at most: that bounds their text.
  static constexpr std::size_t kKeys = std::size_t{1} << 13U;
  static constexpr std::size_t kLots = 4;

  struct Lots {
    std::size_t begin = 0;
    std::size_t end = 0;
  };

  const MergedKeys& keys_;
  std::size_t next_lot_ = 0;
  std::vector<Lots> pieces_;                        ///< by slot
  std::vector<std::unique_ptr<TraceKeys>> traces_;  ///< by thread, each in memory of its own
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
