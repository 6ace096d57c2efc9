#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "output/line_block.h"
#include "output/output.h"
#include "parallel/piece_work.h"
#include "parallel/thread_plan.h"
#include "profile/ticks/ordered_ticks.h"
#include "reports/row_printer.h"

namespace ptick {

/// Prints the rows of the per-line report program by program, with subtotals. Of many rows, batches
/// are laid out by several threads and printed in order: many small programs, or a part of a large
/// one.
class ProgramBatches final : public PieceWork {
 public:
  /// `programs` are the rows of `ticks` in the order in which they are printed. All must outlive
  /// this.
  ProgramBatches(const OrderedTicks& ticks, std::span<const std::size_t> programs,
                 RowPrinter& printer, Output& output, const ThreadPlan& plan);

  void Print();

  bool Begin(std::size_t slot) override;
  void Do(std::size_t slot, unsigned thread) override;
  bool Finish(std::size_t slot) override;

 private:
  struct alignas(64) Batch {
    std::span<const std::size_t> programs;  ///< small ones; or empty, for a part of a large one
    TickSpan part;
    bool is_first_part = false;
    std::size_t ended_program = 0;  ///< the large one, where this is its last part
    bool is_last_part = false;
    std::optional<RowLayout::WholeSums> sums;  ///< of the part
    LineBlock lines;
  };

  template <typename Lines>
  void PrintProgram(std::size_t program, RowPrinter& printer, Lines& lines) const;
  void BeginPart(Batch& batch);
  void AddUp(const Batch& batch);
  void PrintSubtotalOf(std::size_t program);

  const OrderedTicks& ticks_;
  std::span<const std::size_t> programs_;  ///< those that no batch has taken
  RowPrinter& printer_;
  Output& output_;
  ThreadPlan plan_;

  TickSpan rest_;  ///< of the large program at the front

  std::vector<RowPrinter> printers_;  ///< by thread
  std::vector<Batch> batches_;        ///< by slot
  std::optional<RowLayout::WholeSums> sums_ =
      RowLayout::WholeSums{};  ///< of a large program so far
};

}  // namespace ptick
