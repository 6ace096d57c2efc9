// Whether ticks changed beyond chance: the choice of the test.
#pragma once

#include <cstddef>
#include <optional>

#include "compare/amounts.h"
#include "compare/binomial_test.h"

namespace ptick::compare {

/// What one side has of a key, if it has it.
struct Observed {
  const Amounts& amounts;
  std::optional<Amounts::Id> key;
  /// Of the runs.
  Number sum;
};

/// Ticks are samples. With three runs or more on each side the runs say how far chance goes:
/// Welch's t-test. With less, the counts themselves do: the exact binomial test.
class TickTest {
 public:
  struct Sides {
    std::size_t old_runs = 0;
    std::size_t new_runs = 0;
    /// How much was watched on each side, for the binomial test.
    double old_weight = 1;
    double new_weight = 1;
    /// What the new runs are taken times, for Welch's test.
    double new_scale = 1;
  };

  explicit TickTest(const Sides& sides);

  bool IsWelch() const { return is_welch_; }

  /// The p-value of a change; nothing where a run has a number that is no count, which no test is
  /// made for.
  std::optional<double> PValue(const Observed& old_ticks, const Observed& new_ticks);

 private:
  Sides sides_;
  bool is_welch_;
  BinomialTest binomial_;
};

}  // namespace ptick::compare
