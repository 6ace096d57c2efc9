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

/// What a row is sorted by, small and side by side.
struct Place {
  double weight;
  /// The place of its name, then its line or subroutine, or the old one where there is no new one.
  std::uint64_t name_and_detail;
  std::uint32_t row;

  std::uint32_t Detail() const { return static_cast<std::uint32_t>(name_and_detail); }
  bool IsSameName(const Place& other) const {
    return name_and_detail >> 32U == other.name_and_detail >> 32U;
  }
};

// Byte order of names, then the order of lines or subroutines.
class NameOrder {
 public:
  explicit NameOrder(const Comparison& comparison)
      : rows_(comparison.Rows()),
        names_(comparison.Names()),
        has_lines_(comparison.OldSide().GetKind() == Kind::kLine),
        places_(PlacesByBytes(names_.Names())) {}

  std::uint64_t NameAndDetail(const Row& row) const {
    const std::uint32_t detail = row.new_detail == Row::kNone ? row.old_detail : row.new_detail;
    return std::uint64_t{places_[row.name]} << 32U | detail;
  }

  bool Precedes(const Place& a, const Place& b) const {
    if (a.name_and_detail == b.name_and_detail) {  // a line that is gone and a new one
      return rows_[a.row].new_detail == Row::kNone && rows_[b.row].new_detail != Row::kNone;
    }
    if (!a.IsSameName(b)) {
      return a.name_and_detail < b.name_and_detail;
    }
    return has_lines_ ? names_.LinePrecedes(a.Detail(), b.Detail())
                      : names_.Details()[a.Detail()] < names_.Details()[b.Detail()];
  }

 private:
  const std::vector<Row>& rows_;
  const KeyNames& names_;
  bool has_lines_;
  std::vector<std::uint32_t> places_;
};

}  // namespace

std::vector<std::uint32_t> OrderRows(const Comparison& comparison, SortBy by) {
  const NameOrder names(comparison);
  const std::vector<Row>& rows = comparison.Rows();
  std::vector<Place> places(rows.size());
  for (std::uint32_t row = 0; row < rows.size(); ++row) {
    places[row] = {Weight(comparison, rows[row], by), names.NameAndDetail(rows[row]), row};
  }
  std::ranges::sort(places, [&](const Place& a, const Place& b) {
    return a.weight != b.weight ? a.weight > b.weight : names.Precedes(a, b);
  });
  std::vector<std::uint32_t> order(places.size());
  std::ranges::transform(places, order.begin(), &Place::row);
  return order;
}

}  // namespace ptick::compare
