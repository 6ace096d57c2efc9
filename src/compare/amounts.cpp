#include "compare/amounts.h"

#include <algorithm>
#include <cmath>
#include <variant>

#include "value/arithmetic.h"

namespace ptick::compare {

namespace {

long double AsLong(const Number& number) {
  return std::visit([](auto form) { return static_cast<long double>(form); }, number);
}

bool IsCountNumber(const Number& number) {
  const auto* const whole = std::get_if<std::int64_t>(&number);
  if (whole != nullptr) {
    return *whole >= 0;
  }
  const double floating = std::get<double>(number);
  return floating >= 0 && std::floor(floating) == floating;
}

}  // namespace

void Amounts::Add(Id key, std::int64_t number) {
  Cell& cell = Touch(key);
  if (__builtin_add_overflow(cell.of_run, number, &cell.of_run)) {
    // What overflows wraps around: the builtin stored the low bits, which are taken back.
    cell.of_run = static_cast<std::int64_t>(static_cast<std::uint64_t>(cell.of_run) -
                                            static_cast<std::uint64_t>(number));
    odd_in_run_[key].Add(number);
  }
}

void Amounts::Add(Id key, const Value& number) {
  const Number parsed = number.AsNumber();
  if (const auto* const whole = std::get_if<std::int64_t>(&parsed)) {
    Add(key, *whole);
    return;
  }
  Touch(key);
  odd_in_run_[key].Add(Value(parsed));
}

Amounts::Cell& Amounts::Touch(Id key) {
  if (key >= cells_.size()) {
    cells_.resize(std::size_t{key} + 1);
  }
  Cell& cell = cells_[key];
  if (!cell.is_in_run) {
    cell.is_in_run = true;
    in_run_.push_back(key);
  }
  return cell;
}

void Amounts::EndRun() {
  if (runs_ == 1) {
    KeepSpreads();
  }
  ++runs_;
  if (runs_ > 1) {
    spreads_.resize(cells_.size());
  }
  for (const Id key : in_run_) {
    Cell& cell = cells_[key];
    const Number number = EndRunOf(key, cell);
    AddToSum(key, cell, number);
    if (runs_ > 1) {
      Widen(key, number);
    }
    if (!IsCountNumber(number)) {
      no_counts_.insert(key);
    }
  }
  in_run_.clear();
  odd_in_run_.clear();
}

// What the run had of the key, which is empty for the next one.
Number Amounts::EndRunOf(Id key, Cell& cell) {
  Number number = cell.of_run;
  if (!odd_in_run_.empty()) {
    if (const auto odd = odd_in_run_.find(key); odd != odd_in_run_.end()) {
      number = ptick::Add(Value(cell.of_run), odd->second.Total()).AsNumber();
    }
  }
  cell.of_run = 0;
  cell.is_in_run = false;
  ++cell.runs;
  return number;
}

void Amounts::AddToSum(Id key, Cell& cell, const Number& number) {
  const auto* const whole = std::get_if<std::int64_t>(&number);
  std::int64_t sum = 0;
  if (whole != nullptr && !__builtin_add_overflow(cell.sum, *whole, &sum)) {
    cell.sum = sum;
  } else {
    odd_sums_[key].Add(Value(number));
  }
}

// One number more: the way of Welford.
void Amounts::Widen(Id key, const Number& number) {
  Spread& spread = spreads_[key];
  const long double distance = AsLong(number) - spread.mean;
  spread.mean += distance / static_cast<long double>(cells_[key].runs);
  spread.squares += distance * (AsLong(number) - spread.mean);
}

// One run alone has no spread: kept from the second on, it needs the numbers of the first.
void Amounts::KeepSpreads() {
  spreads_.resize(cells_.size());
  for (Id key = 0; key < cells_.size(); ++key) {
    if (cells_[key].runs != 0) {
      spreads_[key].mean = AsLong(Sum(key));
    }
  }
}

Number Amounts::Sum(Id key) const {
  if (key >= cells_.size()) {
    return std::int64_t{0};
  }
  if (!odd_sums_.empty()) {
    if (const auto odd = odd_sums_.find(key); odd != odd_sums_.end()) {
      return ptick::Add(Value(cells_[key].sum), odd->second.Total()).AsNumber();
    }
  }
  return cells_[key].sum;
}

// The runs that do not have the key are a group of its own, of zeros: two groups are joined.
double Amounts::Deviation(Id key) const {
  if (runs_ < 2 || key >= spreads_.size()) {
    return 0;
  }
  const Spread& spread = spreads_[key];
  const auto all = static_cast<long double>(runs_);
  const auto with = static_cast<long double>(cells_[key].runs);
  const long double squares =
      spread.squares + spread.mean * spread.mean * with * (all - with) / all;
  return static_cast<double>(std::sqrt(squares / (all - 1)));
}

}  // namespace ptick::compare
