// The columns of the table, for each kind of rows.
#pragma once

#include <functional>
#include <vector>

#include "companion/table.h"
#include "ptick_diff/diff.h"

namespace ptick::compare {

struct RowColumn {
  companion::Column column;
  std::function<companion::Cell(const Row& row)> cell;
};

/// `has_noise`: whether rows within noise are shown, which are marked. The diff lives as long as
/// the columns.
std::vector<RowColumn> RowColumns(const Diff& diff, bool has_noise);

}  // namespace ptick::compare
