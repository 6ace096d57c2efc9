// Comparisons of profiles that are written in a test, with their rows as texts.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "compare/comparison.h"
#include "compare/key_names.h"
#include "compare/line_moves.h"
#include "compare/row_order.h"
#include "compare/side.h"

namespace ptick::testing {

/// The texts of the runs of a side: records without "PROFILE:", a space after each, "|" for TAB.
using Runs = std::vector<std::vector<std::string>>;

/// Two sides and what they share; they stay where they are.
struct Sides {
  Sides(compare::Kind kind, const Runs& old_runs, const Runs& new_runs);

  compare::Comparison Compare(const compare::ComparisonOptions& options = {}) const {
    return {old_side, new_side, options};
  }

  compare::KeyNames names;
  compare::Side old_side;
  compare::Side new_side;
};

/// "trace|A|1|5" for each "A 1 5".
std::vector<std::string> Traces(const std::vector<std::string>& entries);

/// Each row in its order: name, old and new detail, old and new value, change: "A 1>2 5 7 +2"; "-"
/// for what is not there, "~" at the end of a row within noise.
std::vector<std::string> RowTexts(const compare::Comparison& comparison,
                                  compare::SortBy by = compare::SortBy::kChange);

}  // namespace ptick::testing
