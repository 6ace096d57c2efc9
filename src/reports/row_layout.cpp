#include "reports/row_layout.h"

#include <algorithm>
#include <cstring>

#include "reports/columns.h"
#include "value/arithmetic.h"

namespace ptick {

namespace {

/// Ready-made line columns for line numbers below 10,000, nearly all of them: copying beats
/// formatting.
constexpr std::size_t kTabledLines = 10000;
using LineColumn = std::array<char, kLineWidth>;

constexpr LineColumn MakeLineColumn(std::size_t line) {
  LineColumn column{};
  column.fill(' ');
  std::size_t width = 1;
  for (std::size_t rest = line; rest >= 10; rest /= 10) {
    ++width;
  }
  for (std::size_t rest = line; width > 0; rest /= 10) {
    column[--width] = static_cast<char>('0' + rest % 10);
  }
  return column;
}

constexpr std::array<LineColumn, kTabledLines> kLineColumns = [] {
  std::array<LineColumn, kTabledLines> columns{};
  for (std::size_t line = 0; line < kTabledLines; ++line) {
    columns[line] = MakeLineColumn(line);
  }
  return columns;
}();

char* PutLine(std::uint32_t line, char* at) {
  if (line < kTabledLines) {
    std::memcpy(at, kLineColumns[line].data(), kLineWidth);
    return at + kLineWidth;
  }
  std::array<char, 10> digits;  // NOLINT(*-member-init): written by to_chars
  return PutLeft(NumberDigits(line, digits), kLineWidth, at);
}

}  // namespace

std::string LayOutColumns(std::string_view source_name, std::string_view line,
                          std::string_view ticks, std::string_view percent) {
  std::string row(kRowWidth, ' ');
  char* at = PutLeft(source_name, kSourceNameWidth, row.data());
  at = PutLeft(line, kLineWidth, at + 1);
  at = PutLeft(ticks, kTicksWidth, at + 1);
  PutLeft(percent, kPercentWidth, at + 1);
  return row;
}

RowLayout::RowLayout(const OrderedTicks& ticks, const Value& total_ticks)
    : ticks_(ticks), share_(total_ticks) {
  auto columns = std::make_shared<std::vector<NameColumn>>(ticks.Programs().size());
  for (std::size_t program = 0; program < columns->size(); ++program) {
    PutLeft(ticks.Programs()[static_cast<NameTable::Id>(program)], kSourceNameWidth,
            (*columns)[program].data());
  }
  name_columns_ = std::move(columns);
}

void RowLayout::StartList() {
  first_ = true;
  ordinary_ = true;
  subtotal_ticks_ = {};
  subtotal_hundredths_ = {};
}

void RowLayout::StartList(std::optional<NameTable::Id> previous_program) {
  StartList();
  first_ = !previous_program;
  previous_program_ = previous_program.value_or(0);
}

void RowLayout::LayOut(const TickEntry& entry, char* row) {
  char* at = row;
  if (first_ || entry.program != previous_program_) {
    std::memcpy(at, (*name_columns_)[entry.program].data(), kSourceNameWidth);
    previous_program_ = entry.program;
    first_ = false;
  } else {
    std::memset(at, ' ', kSourceNameWidth);
  }
  at += kSourceNameWidth;
  *at++ = ' ';
  if (entry.HasExactText()) {
    at = PutLeft(ticks_.ExactLine(entry), kLineWidth, at);
    SetTicks(ticks_.ExactTicks(entry));
  } else {
    at = PutLine(entry.line, at);
    SetTicks(entry.ticks);
  }
  std::memcpy(at, ticks_columns_.data(), ticks_columns_.size());
}

Value RowLayout::SubtotalPercent() const { return Divide(subtotal_hundredths_.Total(), 100); }

std::optional<RowLayout::WholeSums> RowLayout::SubtotalWhole() const {
  const auto ticks = subtotal_ticks_.Whole();
  const auto hundredths = subtotal_hundredths_.Whole();
  return ordinary_ && ticks && hundredths ? std::optional(WholeSums{*ticks, *hundredths})
                                          : std::nullopt;
}

void RowLayout::SetTicks(std::uint32_t ticks) {
  std::array<char, 10> digits;  // NOLINT(*-member-init): written by to_chars
  if (!share_.TotalIsWhole()) {
    SetTicks(NumberDigits(ticks, digits));
    return;
  }
  if (!ticks_known_ || ticks != previous_ticks_) {
    previous_ticks_ = ticks;
    previous_hundredths_ = share_.Hundredths(ticks);
    ticks_known_ = true;
    SetTicksColumns(NumberDigits(ticks, digits), previous_hundredths_);
  }
  subtotal_ticks_.Add(std::int64_t{ticks});
  subtotal_hundredths_.Add(previous_hundredths_);
}

void RowLayout::SetTicks(std::string_view ticks) {
  const Value hundredths = share_.Hundredths(Value(ticks));
  ticks_known_ = false;
  ordinary_ = false;
  SetTicksColumns(ticks, hundredths);
  subtotal_ticks_.Add(Value(ticks));
  subtotal_hundredths_.Add(hundredths);
}

// A space, the ticks, a space, and the percentage in its plain form.
void RowLayout::SetTicksColumns(std::string_view ticks, const Value& hundredths) {
  ticks_columns_.front() = ' ';
  char* at = PutLeft(ticks, kTicksWidth, ticks_columns_.data() + 1);
  *at++ = ' ';
  PutLeft(Divide(hundredths, 100).Text(), kPercentWidth, at);
}

}  // namespace ptick
