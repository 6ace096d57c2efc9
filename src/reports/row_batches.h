#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "output/line_block.h"
#include "output/output.h"
#include "parallel/piece_work.h"
#include "parallel/thread_plan.h"
#include "profile/ticks/ordered_ticks.h"
#include "reports/row_printer.h"

namespace ptick {

/// Prints one row per entry, all entries in their order. Of many rows, batches are laid out by
/// several threads and printed in order.
class RowBatches final : public PieceWork {
 public:
  /// All must outlive this.
  RowBatches(const OrderedTicks& ticks, RowPrinter& printer, Output& output,
             const ThreadPlan& plan);

  void Print();

  bool Begin(std::size_t slot) override;
  void Do(std::size_t slot, unsigned thread) override;
  bool Finish(std::size_t slot) override;

 private:
  struct alignas(64) Batch {
    std::vector<TickSpan> entries;
    std::optional<NameTable::Id> previous_program;  ///< that of the row before the first one
    LineBlock lines;
  };

  TickSpan NextEntries(std::size_t most);

  RowPrinter& printer_;
  Output& output_;
  ThreadPlan plan_;

  OrderedTicks::Walk walk_;
  bool walk_has_ended_ = false;
  std::vector<TickSpan> waiting_;  ///< entries that the walk has reached
  std::size_t next_waiting_ = 0;
  std::optional<NameTable::Id> last_program_;  ///< that of the last entry taken

  std::vector<RowPrinter> printers_;  ///< by thread
  std::vector<Batch> batches_;        ///< by slot
};

}  // namespace ptick
