#include "ptick_export/facts/line_sums.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <utility>
#include <variant>

#include "profile/scan/ordinary_number.h"
#include "value/arithmetic.h"
#include "value/number_text.h"

namespace ptick::exports {

namespace {

constexpr Number kZero = std::int64_t{0};
constexpr Number kMaxTicks = std::numeric_limits<std::int64_t>::max();

// The whole number below 2^32 that a line is, however it is written.
std::optional<std::uint32_t> LineNumber(std::string_view text) {
  const std::optional<Number> number = ParseNumber(text);
  const auto* const whole = number ? std::get_if<std::int64_t>(&*number) : nullptr;
  if (whole == nullptr || *whole < 0 || *whole > std::numeric_limits<std::uint32_t>::max()) {
    return std::nullopt;
  }
  return static_cast<std::uint32_t>(*whole);
}

}  // namespace

LineSums::LineSums(const TickTable& ticks, const SumRules& rules) : total_(kZero) {
  Collect(ticks, rules);
  std::ranges::sort(rows_, {}, &Row::Key);
  AddUp(rules);
  odd_sums_.clear();
  OrderPrograms();
}

void LineSums::Collect(const TickTable& ticks, const SumRules& rules) {
  // Counted first: a list that grows would need room for twice as many.
  std::size_t entries = 0;
  ticks.ForEach([&entries](const TickEntry& /*entry*/) { ++entries; });
  rows_.reserve(entries);
  ticks.ForEach([&](const TickEntry& entry) {
    if (entry.HasExactText()) {
      CollectOdd(ticks, entry, rules);
    } else {
      rows_.push_back({.program = entry.program, .line = entry.line, .ticks = entry.ticks});
    }
  });
}

void LineSums::CollectOdd(const TickTable& ticks, const TickEntry& entry, const SumRules& rules) {
  const Number number = Value(ticks.ExactTicks(entry)).AsNumber();
  Row row = {.program = entry.program,
             .line = LineOf(ticks.ExactLine(entry), number, rules),
             .ticks = entry.ticks};
  if (CompareNumbers(number, std::int64_t{row.ticks}) != 0) {
    odd_sums_[row.Key()].Add(Value(number));
    row.ticks = 0;
  }
  rows_.push_back(row);
}

std::uint32_t LineSums::LineOf(std::string_view text, const Number& ticks, const SumRules& rules) {
  std::optional<std::uint32_t> line = ParseOrdinary(text);
  if (!line && rules.numbered_lines) {
    line = LineNumber(text);
    if (!line) {
      losses_.unnumbered.Add(ticks);
      line = 0;
    }
  }
  if (line && *line < kOddLine) {
    return *line;
  }
  return kOddLine | odd_lines_.Intern(line ? std::to_string(*line) : text);
}

// In place: there are no more sums than entries.
void LineSums::AddUp(const SumRules& rules) {
  std::size_t sums = 0;
  for (std::size_t row = 0; row < rows_.size();) {
    const std::uint64_t key = rows_[row].Key();
    std::int64_t whole = 0;  // at most 2^32 entries below 2^32 each, which is no overflow
    for (; row < rows_.size() && rows_[row].Key() == key; ++row) {
      whole += rows_[row].ticks;
    }
    RunningSum sum;
    sum.Add(whole);
    if (const auto odd = odd_sums_.find(key); odd != odd_sums_.end()) {
      sum.Add(odd->second.Total());
    }
    if (const std::optional<Number> kept = Kept(sum.Total().AsNumber(), rules)) {
      PutRow(sums++, key, *kept);
    }
  }
  rows_.resize(sums);
}

std::optional<Number> LineSums::Kept(const Number& sum, const SumRules& rules) {
  if (CompareNumbers(sum, kZero) < 0) {
    losses_.negative.Add(sum);
    return std::nullopt;
  }
  const Number kept = rules.whole_ticks ? Int(sum).AsNumber() : sum;
  if (rules.whole_ticks && CompareNumbers(kept, kZero) == 0) {
    losses_.below_one.Add(sum);
    return std::nullopt;
  }
  if (CompareNumbers(sum, kMaxTicks) > 0 || !AddToTotal(kept)) {
    losses_.too_large.Add(sum);
    return std::nullopt;
  }
  if (CompareNumbers(sum, kept) != 0) {
    losses_.cut.Add(Subtract(sum, kept).AsNumber());
  }
  return kept;
}

bool LineSums::AddToTotal(const Number& ticks) {
  const Number total = Add(total_, ticks).AsNumber();
  if (CompareNumbers(total, kMaxTicks) > 0) {
    return false;
  }
  total_ = total;
  return true;
}

void LineSums::PutRow(std::size_t row, std::uint64_t key, const Number& ticks) {
  const auto* const whole = std::get_if<std::int64_t>(&ticks);
  const bool is_small = whole != nullptr && *whole < kOddTicks;
  rows_[row] = {.program = static_cast<std::uint32_t>(key >> 32U),
                .line = static_cast<std::uint32_t>(key),
                .ticks = is_small ? static_cast<std::uint32_t>(*whole) : kOddTicks};
  if (!is_small) {
    odd_ticks_.push_back({.row = row, .ticks = ticks});
  }
}

void LineSums::OrderPrograms() {
  for (std::size_t row = 0; row < rows_.size();) {
    Program program;
    program.id = rows_[row].program;
    program.begin_ = row;
    RunningSum sum;
    for (; row < rows_.size() && rows_[row].program == program.id; ++row) {
      sum.Add(Value(LineAt(row).ticks));
    }
    program.end_ = row;
    program.ticks = sum.Total().AsNumber();
    programs_.push_back(program);
  }
  std::ranges::sort(programs_, [](const Program& a, const Program& b) {
    const int compared = CompareNumbers(a.ticks, b.ticks);
    return compared != 0 ? compared > 0 : a.id > b.id;
  });
}

LineSums::Line LineSums::LineAt(std::size_t row) const {
  const Row& sum = rows_[row];
  Line line;
  if (sum.line < kOddLine) {
    line.number = sum.line;
  } else {
    line.text = odd_lines_[sum.line & ~kOddLine];
    line.number = ParseOrdinary(line.text);
  }
  if (sum.ticks != kOddTicks) {
    line.ticks = std::int64_t{sum.ticks};
  } else {
    line.ticks = std::ranges::lower_bound(odd_ticks_, row, {}, &OddTicks::row)->ticks;
  }
  return line;
}

}  // namespace ptick::exports
