#include "profile/parse/shared_lines.h"

#include <utility>

#include "profile/parse/trace_lines.h"

namespace ptick {

SharedLines::SharedLines(RecordParser& parser, unsigned threads)
    : parser_(parser), pieces_(SlotsFor(threads)), parts_(threads) {}

void SharedLines::BeginPiece(std::size_t slot) {
  pieces_[slot].run = ++runs_;
  pieces_[slot].others.Clear();
}

std::int64_t SharedLines::TakeLines(std::size_t slot, unsigned thread, std::string_view block,
                                    std::int64_t before) {
  return TakeTraceLines(block, before, Ticks(thread), pieces_[slot].others);
}

void SharedLines::EndPiece(std::size_t slot, unsigned thread, std::int64_t line_count) {
  Piece& piece = pieces_[slot];
  piece.line_count = line_count;
  piece.others.End();
  parts_[thread].ticks.EndRun(piece.run);
}

bool SharedLines::Finish(std::size_t slot) {
  const Piece& piece = pieces_[slot];
  has_problem_ = !parser_.ParseOthers(piece.others, piece.line_count);
  return !has_problem_;
}

std::vector<TickPart> SharedLines::TakeTicks() {
  std::vector<TickPart> ticks;
  ticks.reserve(parts_.size());
  for (Part& part : parts_) {
    ticks.push_back(std::move(part.ticks));
  }
  return ticks;
}

}  // namespace ptick
