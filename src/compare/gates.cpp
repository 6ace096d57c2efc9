#include "compare/gates.h"

#include <algorithm>
#include <iterator>

#include "compare/false_discovery.h"
#include "value/arithmetic.h"

namespace ptick::compare {

namespace {

bool IsOver(const Number& change, const Number& old_total, const Value& percent) {
  return Multiply(change, 100) > Multiply(percent, old_total);
}

}  // namespace

bool IsTotalSlower(const Comparison& comparison, const Value& percent) {
  const std::optional<double> p_value = comparison.TotalPValue();
  return IsOver(comparison.TotalChange(), comparison.OldTotal(), percent) &&
         (!p_value || *p_value <= kFalseDiscoveryBar);
}

std::vector<std::uint32_t> SlowerRows(const Comparison& comparison,
                                      const std::vector<std::uint32_t>& order,
                                      const Value& percent) {
  const Number old_total = comparison.OldTotal();
  std::vector<std::uint32_t> slower;
  std::ranges::copy_if(order, std::back_inserter(slower), [&](std::uint32_t n) {
    const Row& row = comparison.Rows()[n];
    return row.is_significant && IsOver(comparison.Change(row), old_total, percent);
  });
  return slower;
}

}  // namespace ptick::compare
