#include "compare/comparison.h"

#include <algorithm>
#include <array>

#include "compare/as_double.h"
#include "compare/false_discovery.h"

namespace ptick::compare {

namespace {

bool IsZero(const Number& number) { return AsDouble(number) == 0; }

std::optional<Number> Mean(const Amounts& amounts, KeyTable::Id key, const Factor& factor) {
  if (key == Row::kNone || !amounts.Has(key)) {
    return std::nullopt;
  }
  return factor.Times(amounts.Sum(key));
}

std::optional<double> DeviationOf(const Amounts& amounts, KeyTable::Id key) {
  if (key == Row::kNone || amounts.Runs() < 2) {
    return std::nullopt;
  }
  return amounts.Deviation(key);
}

Number SumOf(const Amounts& amounts, KeyTable::Id key) {
  return key == Row::kNone ? Number() : amounts.Sum(key);
}

std::optional<Amounts::Id> Known(KeyTable::Id key) {
  return key == Row::kNone ? std::nullopt : std::optional(key);
}

Factor NewFactor(const Side& old_side, const Side& new_side, bool normalize) {
  return normalize
             ? Factor::ToTotal(new_side.Total().Sum(0), old_side.Total().Sum(0), old_side.Runs())
             : Factor::PerRun(new_side.Runs());
}

}  // namespace

bool CanNormalize(const Side& old_side, const Side& new_side) {
  return AsDouble(old_side.Total().Sum(0)) > 0 && AsDouble(new_side.Total().Sum(0)) > 0;
}

Comparison::Comparison(const Side& old_side, const Side& new_side, const ComparisonOptions& options)
    : old_(old_side),
      new_(new_side),
      moves_(options.moves),
      normalize_(options.normalize),
      old_factor_(Factor::PerRun(old_side.Runs())),
      new_factor_(NewFactor(old_side, new_side, options.normalize)) {
  if (normalize_) {
    scale_ = new_factor_.AsDouble() * static_cast<double>(new_.Runs());
  }
  Join(moves_ == nullptr || old_.GetKind() != Kind::kLine ? nullptr : moves_);
  if (IsSampled(old_.GetKind())) {
    TestRows();
  }
}

// A row for each key of the old side, with what the new side has of it, then one for each key that
// only the new side has.
void Comparison::Join(const LineMoves* moves) {
  const KeyTable& old_keys = old_.Keys();
  const KeyTable& new_keys = new_.Keys();
  std::vector<bool> is_joined(new_keys.size());
  for (KeyTable::Id id = 0; id < old_keys.size(); ++id) {
    PrefetchNew(id);
    const Key key = old_keys[id];
    const std::optional<std::uint32_t> detail =
        moves == nullptr ? key.detail : moves->NewLine(key.name, key.detail);
    const std::optional<KeyTable::Id> twin =
        detail ? new_keys.Find({.name = key.name, .detail = *detail}) : std::nullopt;
    if (twin) {
      is_joined[*twin] = true;
    }
    AddRow({.name = key.name,
            .old_detail = key.detail,
            .new_detail = detail.value_or(Row::kNone),
            .old_key = id,
            .new_key = twin.value_or(Row::kNone)});
  }
  for (KeyTable::Id id = 0; id < new_keys.size(); ++id) {
    if (!is_joined[id]) {
      const Key key = new_keys[id];
      const std::optional<std::uint32_t> detail =
          moves == nullptr ? key.detail : moves->OldLine(key.name, key.detail);
      AddRow({.name = key.name,
              .old_detail = detail.value_or(Row::kNone),
              .new_detail = key.detail,
              .new_key = id});
    }
  }
}

// Each key is anywhere among those of the new side: what it needs is asked for a while before, step
// by step. Lines that moved miss this, which costs time only.
void Comparison::PrefetchNew(KeyTable::Id old_key) const {
  constexpr KeyTable::Id kStep = 16;
  const KeyTable& old_keys = old_.Keys();
  const KeyTable& new_keys = new_.Keys();
  if (old_key + 2 * kStep < old_keys.size()) {
    new_keys.PrefetchSlot(old_keys[old_key + 2 * kStep]);
    const Key nearer = old_keys[old_key + kStep];
    new_keys.PrefetchKey(nearer);
    new_.Values().Prefetch(new_keys.LikelyId(nearer));
  }
}

void Comparison::AddRow(Row row) {
  row.old_sum = SumOf(old_.Values(), row.old_key);
  row.new_sum = SumOf(new_.Values(), row.new_key);
  if (IsChanged(row)) {
    rows_.push_back(row);
  }
}

bool Comparison::IsChanged(const Row& row) const {
  if (!IsZero(Change(row))) {
    return true;
  }
  if (old_.GetKind() != Kind::kCommand) {
    return false;
  }
  constexpr std::array kFigures = {CommandFigure::kTimes, CommandFigure::kElapsed,
                                   CommandFigure::kCpu};
  return std::ranges::any_of(kFigures, [&](CommandFigure figure) {
    return !IsZero(Factor::Difference(SumOf(new_.Figures(figure), row.new_key), new_factor_,
                                      SumOf(old_.Figures(figure), row.old_key), old_factor_));
  });
}

void Comparison::TestRows() {
  TickTest test(SidesForRows());
  std::vector<double> p_values;
  for (Row& row : rows_) {
    if (const std::optional<double> p_value =
            test.PValue({old_.Values(), Known(row.old_key), row.old_sum},
                        {new_.Values(), Known(row.new_key), row.new_sum})) {
      row.p_value = *p_value;
      p_values.push_back(*p_value);
    }
  }
  const std::vector<double> rates = FalseDiscoveryRates(p_values);
  auto rate = rates.begin();
  for (Row& row : rows_) {
    if (row.IsTested()) {
      row.rate = *rate++;
      row.is_significant = row.rate <= kFalseDiscoveryBar;
    }
  }
}

TickTest::Sides Comparison::SidesForRows() const {
  TickTest::Sides sides = SidesForTotals();
  if (normalize_) {
    sides.old_weight = AsDouble(old_.Total().Sum(0));
    sides.new_weight = AsDouble(new_.Total().Sum(0));
    sides.new_scale = scale_;
  }
  return sides;
}

TickTest::Sides Comparison::SidesForTotals() const {
  return {.old_runs = old_.Runs(),
          .new_runs = new_.Runs(),
          .old_weight = static_cast<double>(old_.Runs()),
          .new_weight = static_cast<double>(new_.Runs())};
}

bool Comparison::IsWelch() const { return TickTest(SidesForTotals()).IsWelch(); }

std::optional<Number> Comparison::Old(const Row& row) const {
  return row.old_key == Row::kNone ? std::nullopt : std::optional(old_factor_.Times(row.old_sum));
}

std::optional<Number> Comparison::New(const Row& row) const {
  return row.new_key == Row::kNone ? std::nullopt : std::optional(new_factor_.Times(row.new_sum));
}

Number Comparison::Change(const Row& row) const {
  return Factor::Difference(row.new_sum, new_factor_, row.old_sum, old_factor_);
}

std::optional<double> Comparison::OldDeviation(const Row& row) const {
  return DeviationOf(old_.Values(), row.old_key);
}

std::optional<double> Comparison::NewDeviation(const Row& row) const {
  const std::optional<double> deviation = DeviationOf(new_.Values(), row.new_key);
  return deviation ? std::optional(*deviation * scale_) : std::nullopt;
}

std::optional<Number> Comparison::OldFigure(const Row& row, CommandFigure figure) const {
  return Mean(old_.Figures(figure), row.old_key, old_factor_);
}

std::optional<Number> Comparison::NewFigure(const Row& row, CommandFigure figure) const {
  return Mean(new_.Figures(figure), row.new_key, new_factor_);
}

Number Comparison::OldTotal() const {
  return Factor::PerRun(old_.Runs()).Times(old_.Total().Sum(0));
}

Number Comparison::NewTotal() const {
  return Factor::PerRun(new_.Runs()).Times(new_.Total().Sum(0));
}

Number Comparison::TotalChange() const {
  return Factor::Difference(new_.Total().Sum(0), Factor::PerRun(new_.Runs()), old_.Total().Sum(0),
                            Factor::PerRun(old_.Runs()));
}

std::optional<double> Comparison::TotalPValue() const {
  if (IsZero(TotalChange())) {
    return 1;
  }
  return TickTest(SidesForTotals())
      .PValue({old_.Total(), 0, old_.Total().Sum(0)}, {new_.Total(), 0, new_.Total().Sum(0)});
}

std::size_t Comparison::RowsPastTheEnd() const {
  if (moves_ == nullptr) {
    return 0;
  }
  return static_cast<std::size_t>(std::ranges::count_if(rows_, [&](const Row& row) {
    return (row.old_key != Row::kNone && moves_->IsPastOldEnd(row.name, row.old_detail)) ||
           (row.new_key != Row::kNone && moves_->IsPastNewEnd(row.name, row.new_detail));
  }));
}

}  // namespace ptick::compare
