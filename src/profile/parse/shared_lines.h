#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "parallel/piece_work.h"
#include "profile/parse/other_lines.h"
#include "profile/parse/record_parser.h"
#include "profile/ticks/tick_part.h"

namespace ptick {

/// Pieces of a profile's lines as work for several threads, wherever the lines come from: whichever
/// thread has a piece takes its trace lines; all the others are parsed in order, on the caller's
/// thread.
class SharedLines : public PieceWork {
 public:
  /// `parser` gets the other lines, and must outlive this.
  SharedLines(RecordParser& parser, unsigned threads);

  bool Finish(std::size_t slot) override;

  /// Whether the parser has come to a line of an unknown record type.
  bool HasProblem() const { return has_problem_; }

  /// The trace entries, one part per thread, for JoinTicks.
  std::vector<TickPart> TakeTicks();

 protected:
  /// To be called in Begin. The next piece of the profile is the one in `slot`.
  void BeginPiece(std::size_t slot);

  /// To be called in Do, block by block. `before` is how many lines of the piece come before the
  /// block. Returns the number of its lines.
  std::int64_t TakeLines(std::size_t slot, unsigned thread, std::string_view block,
                         std::int64_t before);

  /// Where trace entries come as something else than lines.
  TickTable& Ticks(unsigned thread) { return parts_[thread].ticks.Table(); }

  /// To be called at the end of Do. The piece had so many lines.
  void EndPiece(std::size_t slot, unsigned thread, std::int64_t line_count);

 private:
  // Each on cache lines of its own: other threads are at the ones beside it.
  struct alignas(64) Piece {
    std::uint32_t run = 0;
    std::int64_t line_count = 0;
    OtherLines others;
  };
  struct alignas(64) Part {
    TickPart ticks;
  };

  RecordParser& parser_;
  std::uint32_t runs_ = 0;
  bool has_problem_ = false;
  std::vector<Piece> pieces_;  ///< by slot
  std::vector<Part> parts_;    ///< by thread
};

}  // namespace ptick
