// One number for each key, added up within a run, then over the runs of a side.
#pragma once

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "figures/running_sum.h"
#include "value/value.h"

namespace ptick::compare {

/// Keys are numbers from 0 on. A run that does not have a key counts as 0 for it.
///
/// Numbers that are whole in 64 bits, nearly all, take a few bytes; others are kept aside and added
/// as the value layer adds.
class Amounts {
 public:
  using Id = std::uint32_t;

  /// Adds to what the present run has of a key.
  void Add(Id key, std::int64_t number);
  void Add(Id key, const Value& number);
  /// A hint: a key will be added to, or asked for, soon.
  void Prefetch(Id key) const {
    if (key < cells_.size()) {
      __builtin_prefetch(&cells_[key]);
    }
  }
  /// Ends the present run; another one begins.
  void EndRun();

  std::size_t Runs() const { return runs_; }
  /// Whether any run had the key.
  bool Has(Id key) const { return key < cells_.size() && cells_[key].runs != 0; }

  /// The sum over all runs; 0 for a key that none had.
  Number Sum(Id key) const;
  /// How far the runs are apart: the standard deviation of the sample, squares divided by one less
  /// than the runs. 0 for one run.
  double Deviation(Id key) const;
  /// Whether each run has a whole number that is not negative.
  bool IsCount(Id key) const { return no_counts_.empty() || !no_counts_.contains(key); }

 private:
  struct Cell {
    std::int64_t sum = 0;
    std::int64_t of_run = 0;
    /// How many runs had the key.
    std::uint32_t runs = 0;
    bool is_in_run = false;
  };
  /// Mean and sum of squared distances from it, over the runs that had the key.
  struct Spread {
    long double mean = 0;
    long double squares = 0;
  };

  Cell& Touch(Id key);
  Number EndRunOf(Id key, Cell& cell);
  void AddToSum(Id key, Cell& cell, const Number& number);
  void Widen(Id key, const Number& number);
  void KeepSpreads();

  std::size_t runs_ = 0;
  std::vector<Cell> cells_;
  /// The keys of the present run.
  std::vector<Id> in_run_;
  /// From the second run on.
  std::vector<Spread> spreads_;
  /// What is not whole in 64 bits, to be added to what the cells have.
  std::unordered_map<Id, RunningSum> odd_in_run_;
  std::unordered_map<Id, RunningSum> odd_sums_;
  std::unordered_set<Id> no_counts_;
};

}  // namespace ptick::compare
