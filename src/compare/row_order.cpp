#include "compare/row_order.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

#include "compare/as_double.h"

namespace ptick::compare {

namespace {

constexpr double kFirst = std::numeric_limits<double>::infinity();

double ValueOrLast(const std::optional<Number>& value) {
  return value ? AsDouble(*value) : -kFirst;
}

// What rows are sorted by, the largest first.
double Weight(const Comparison& comparison, const Row& row, SortBy by) {
  switch (by) {
    case SortBy::kChange:
      return std::abs(AsDouble(comparison.Change(row)));
    case SortBy::kRelative: {
      const std::optional<Number> old_value = comparison.Old(row);
      const double base = old_value ? AsDouble(*old_value) : 0;
      return base == 0 ? kFirst : std::abs(AsDouble(comparison.Change(row)) / base);
    }
    case SortBy::kOld:
      return ValueOrLast(comparison.Old(row));
    case SortBy::kNew:
      return ValueOrLast(comparison.New(row));
    case SortBy::kName:
      break;
  }
  return 0;
}

// Byte order of names, then the order of lines or subroutines.
class NameOrder {
 public:
  explicit NameOrder(const Comparison& comparison)
      : names_(comparison.Names()),
        has_lines_(comparison.OldSide().GetKind() == Kind::kLine),
        places_(PlacesByBytes(names_.Names())) {}

  bool Precedes(const Row& row, const Row& other) const {
    if (row.name != other.name) {
      return places_[row.name] < places_[other.name];
    }
    const std::uint32_t detail = DetailOf(row);
    const std::uint32_t other_detail = DetailOf(other);
    if (detail == other_detail) {  // the same number, a line that is gone and a new one
      return row.new_detail == Row::kNone && other.new_detail != Row::kNone;
    }
    return has_lines_ ? names_.LinePrecedes(detail, other_detail)
                      : names_.Details()[detail] < names_.Details()[other_detail];
  }

 private:
  static std::uint32_t DetailOf(const Row& row) {
    return row.new_detail == Row::kNone ? row.old_detail : row.new_detail;
  }

  const KeyNames& names_;
  bool has_lines_;
  std::vector<std::uint32_t> places_;
};

}  // namespace

std::vector<std::uint32_t> OrderRows(const Comparison& comparison, SortBy by) {
  struct Place {
    double weight;
    std::uint32_t row;
  };
  const std::vector<Row>& rows = comparison.Rows();
  std::vector<Place> places(rows.size());
  for (std::uint32_t row = 0; row < rows.size(); ++row) {
    places[row] = {Weight(comparison, rows[row], by), row};
  }
  const NameOrder names(comparison);
  std::ranges::sort(places, [&](const Place& a, const Place& b) {
    return a.weight != b.weight ? a.weight > b.weight : names.Precedes(rows[a.row], rows[b.row]);
  });
  std::vector<std::uint32_t> order(places.size());
  std::ranges::transform(places, order.begin(), &Place::row);
  return order;
}

}  // namespace ptick::compare
