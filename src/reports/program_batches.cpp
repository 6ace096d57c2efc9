#include "reports/program_batches.h"

#include <algorithm>
#include <utility>

#include "value/arithmetic.h"

namespace ptick {

ProgramBatches::ProgramBatches(const OrderedTicks& ticks, std::span<const std::size_t> programs,
                               RowPrinter& printer, Output& output, const ThreadPlan& plan)
    : ticks_(ticks), programs_(programs), printer_(printer), output_(output), plan_(plan) {}

void ProgramBatches::Print() {
  const bool is_shared =
      plan_.threads > 1 && output_.IsPlain() && ticks_.EntryCount() > plan_.rows_alone;
  if (!is_shared) {
    for (const std::size_t program : programs_) {
      PrintProgram(program, printer_, output_);
    }
    return;
  }
  printers_ = std::vector<RowPrinter>(plan_.threads, printer_);
  batches_ = std::vector<Batch>(SlotsFor(plan_.threads));
  DoInOrder(*this, plan_.threads);
}

template <typename Lines>
void ProgramBatches::PrintProgram(std::size_t program, RowPrinter& printer, Lines& lines) const {
  printer.Layout().StartList();
  printer.PrintRows(ticks_.EntriesOf(program), lines);
  PrintSubtotal(printer.Layout().SubtotalTicks(), printer.Layout().SubtotalPercent(), lines);
}

bool ProgramBatches::Begin(std::size_t slot) {
  if (programs_.empty()) {
    return false;
  }
  Batch& batch = batches_[slot];
  std::size_t small = 0;
  for (std::size_t rows = 0; small < programs_.size() && rows < plan_.batch_rows; ++small) {
    const std::size_t size = ticks_.EntriesOf(programs_[small]).size();
    if (size > plan_.batch_rows) {
      break;
    }
    rows += size;
  }
  batch.programs = programs_.first(small);
  programs_ = programs_.subspan(small);
  if (small == 0) {
    BeginPart(batch);
  }
  return true;
}

void ProgramBatches::BeginPart(Batch& batch) {
  const std::size_t program = programs_.front();
  batch.is_first_part = rest_.size() == 0;
  if (batch.is_first_part) {
    rest_ = ticks_.EntriesOf(program);
  }
  batch.part = rest_.TakeFirst(std::min(plan_.batch_rows, rest_.size()));
  batch.is_last_part = rest_.size() == 0;
  if (batch.is_last_part) {
    batch.ended_program = program;
    programs_ = programs_.subspan(1);
  }
}

void ProgramBatches::Do(std::size_t slot, unsigned thread) {
  Batch& batch = batches_[slot];
  RowPrinter& printer = printers_[thread];
  batch.lines.Clear();
  for (const std::size_t program : batch.programs) {
    PrintProgram(program, printer, batch.lines);
  }
  if (batch.programs.empty()) {
    const NameTable::Id own = batch.part.Last().program;
    printer.Layout().StartList(batch.is_first_part ? std::nullopt : std::optional(own));
    printer.PrintRows(batch.part, batch.lines);
    batch.sums = printer.Layout().SubtotalWhole();
  }
}

bool ProgramBatches::Finish(std::size_t slot) {
  Batch& batch = batches_[slot];
  output_.PrintLines(batch.lines.Lines());
  if (batch.programs.empty()) {
    AddUp(batch);
    if (batch.is_last_part) {
      PrintSubtotalOf(batch.ended_program);
      sums_ = RowLayout::WholeSums{};
    }
  }
  return true;
}

void ProgramBatches::AddUp(const Batch& batch) {
  const bool is_whole =
      sums_ && batch.sums &&
      !__builtin_add_overflow(sums_->ticks, batch.sums->ticks, &sums_->ticks) &&
      !__builtin_add_overflow(sums_->hundredths, batch.sums->hundredths, &sums_->hundredths);
  if (!is_whole) {
    sums_.reset();
  }
}

// Sums that are not whole depend on the order of the additions: they are added up once more, row by
// row.
void ProgramBatches::PrintSubtotalOf(std::size_t program) {
  if (sums_) {
    PrintSubtotal(Value(sums_->ticks), Divide(Value(sums_->hundredths), 100), output_);
    return;
  }
  RowLayout& layout = printer_.Layout();
  layout.StartList();
  std::array<char, kRowWidth> row;  // NOLINT(*-member-init): laid out for the sums alone
  const auto add_up = [&](const TickEntry& entry) { layout.LayOut(entry, row.data()); };
  ticks_.EntriesOf(program).ForEach(add_up);
  PrintSubtotal(layout.SubtotalTicks(), layout.SubtotalPercent(), output_);
}

}  // namespace ptick
