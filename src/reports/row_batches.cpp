#include "reports/row_batches.h"

#include <algorithm>
#include <limits>

namespace ptick {

RowBatches::RowBatches(const OrderedTicks& ticks, RowPrinter& printer, Output& output,
                       const ThreadPlan& plan)
    : printer_(printer), output_(output), plan_(plan), walk_(ticks) {}

void RowBatches::Print() {
  printer_.Layout().StartList();
  const bool is_shared = plan_.threads > 1 && output_.IsPlain();
  std::size_t alone = is_shared ? plan_.rows_alone : std::numeric_limits<std::size_t>::max();
  while (alone > 0) {
    const TickSpan entries = NextEntries(alone);
    if (entries.size() == 0) {
      return;
    }
    printer_.PrintRows(entries, output_);
    alone -= entries.size();
  }
  printers_ = std::vector<RowPrinter>(plan_.threads, printer_);
  batches_ = std::vector<Batch>(SlotsFor(plan_.threads));
  DoInOrder(*this, plan_.threads);
}

// Entries that come next, at most so many, and none at the end.
TickSpan RowBatches::NextEntries(std::size_t most) {
  while (next_waiting_ == waiting_.size()) {
    if (walk_has_ended_) {
      return {};
    }
    waiting_.clear();
    next_waiting_ = 0;
    const auto wait = [this](const TickSpan& entries) {
      if (entries.size() > 0) {
        waiting_.push_back(entries);
      }
    };
    walk_has_ended_ = !walk_.NextSpans(wait);
  }
  TickSpan& waiting = waiting_[next_waiting_];
  const TickSpan entries = waiting.TakeFirst(std::min(most, waiting.size()));
  next_waiting_ += waiting.size() == 0 ? 1U : 0U;
  last_program_ = entries.Last().program;
  return entries;
}

bool RowBatches::Begin(std::size_t slot) {
  Batch& batch = batches_[slot];
  batch.previous_program = last_program_;
  batch.entries.clear();
  for (std::size_t room = plan_.batch_rows; room > 0;) {
    const TickSpan entries = NextEntries(room);
    if (entries.size() == 0) {
      break;
    }
    batch.entries.push_back(entries);
    room -= entries.size();
  }
  return !batch.entries.empty();
}

void RowBatches::Do(std::size_t slot, unsigned thread) {
  Batch& batch = batches_[slot];
  RowPrinter& printer = printers_[thread];
  printer.Layout().StartList(batch.previous_program);
  batch.lines.Clear();
  for (const TickSpan& entries : batch.entries) {
    printer.PrintRows(entries, batch.lines);
  }
}

bool RowBatches::Finish(std::size_t slot) {
  output_.PrintLines(batches_[slot].lines.Lines());
  return true;
}

}  // namespace ptick
