#include "reports/row_layout.h"

#include <algorithm>
#include <charconv>
#include <variant>

namespace ptick {

namespace {

// `text` left-justified in `width` bytes at `at`; returns the place behind them.
char* PutLeft(std::string_view text, std::int64_t width, char* at) {
  const std::string_view shown = text.substr(0, static_cast<std::size_t>(width));
  return std::fill_n(std::copy(shown.begin(), shown.end(), at),
                     static_cast<std::size_t>(width) - shown.size(), ' ');
}

std::string_view NumberDigits(std::uint32_t number, std::array<char, 10>& digits) {
  const auto end = std::to_chars(digits.begin(), digits.end(), number).ptr;
  return {digits.data(), static_cast<std::size_t>(end - digits.data())};
}

char* PutLeft(std::uint32_t number, std::int64_t width, char* at) {
  std::array<char, 10> digits;  // NOLINT(*-member-init): written by to_chars
  return PutLeft(NumberDigits(number, digits), width, at);
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

RowLayout::RowLayout(const TickTable& details, const Value& total_ticks)
    : details_(details), total_ticks_(total_ticks), name_columns_(details.Programs().size()) {
  const Number total = total_ticks.AsNumber();
  const auto* whole = std::get_if<std::int64_t>(&total);
  total_is_whole_ = whole != nullptr;
  if (total_is_whole_) {
    whole_total_ = static_cast<double>(*whole);
  }
  for (std::size_t program = 0; program < name_columns_.size(); ++program) {
    PutLeft(details.Programs()[static_cast<NameTable::Id>(program)], kSourceNameWidth,
            name_columns_[program].data());
  }
}

void RowLayout::StartList() {
  first_ = true;
  subtotal_ticks_ = {};
  subtotal_hundredths_ = {};
}

void RowLayout::LayOut(const TickEntry& entry, char* row) {
  char* at = row;
  if (first_ || entry.Program != previous_program_) {
    const NameColumn& name = name_columns_[entry.Program];
    at = std::copy(name.begin(), name.end(), at);
    previous_program_ = entry.Program;
    first_ = false;
  } else {
    at = std::fill_n(at, kSourceNameWidth, ' ');
  }
  *at++ = ' ';
  if (entry.HasExactText()) {
    at = PutLeft(details_.ExactLine(entry), kLineWidth, at);
    SetTicks(details_.ExactTicks(entry));
  } else {
    at = PutLeft(entry.Line, kLineWidth, at);
    SetTicks(entry.Ticks);
  }
  *at++ = ' ';
  std::copy(ticks_columns_.begin(), ticks_columns_.end(), at);
}

Value RowLayout::SubtotalPercent() const { return Divide(subtotal_hundredths_.Total(), 100); }

void RowLayout::SetTicks(std::uint32_t ticks) {
  if (!ticks_known_ || ticks != previous_ticks_) {
    std::array<char, 10> digits;  // NOLINT(*-member-init): written by to_chars
    previous_ticks_ = ticks;
    previous_hundredths_ = Hundredths(ticks);
    ticks_known_ = true;
    SetTicksColumns(NumberDigits(ticks, digits), previous_hundredths_);
  }
  subtotal_ticks_.Add(std::int64_t{ticks});
  subtotal_hundredths_.Add(previous_hundredths_);
}

void RowLayout::SetTicks(std::string_view ticks) {
  const Value hundredths = Int(Divide(Multiply(ticks, 10000), total_ticks_));
  ticks_known_ = false;
  SetTicksColumns(ticks, hundredths);
  subtotal_ticks_.Add(Value(ticks));
  subtotal_hundredths_.Add(hundredths);
}

// The ticks, a blank, and the percentage in its plain form.
void RowLayout::SetTicksColumns(std::string_view ticks, const Value& hundredths) {
  char* at = PutLeft(ticks, kTicksWidth, ticks_columns_.data());
  *at++ = ' ';
  PutLeft(Divide(hundredths, 100).Text(), kPercentWidth, at);
}

// The share of the total in hundredths of a per cent, cut.
std::int64_t RowLayout::Hundredths(std::uint32_t ticks) const {
  const std::int64_t scaled = std::int64_t{ticks} * 10000;
  return whole_total_ == 0 ? 0 : static_cast<std::int64_t>(static_cast<double>(scaled) / whole_total_);
}

}  // namespace ptick
