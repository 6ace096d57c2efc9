#include "compare/false_discovery.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace ptick::compare {

// The k-th smallest of m p-values is taken times m / k, and no rate may be above that of a larger
// p-value.
std::vector<double> FalseDiscoveryRates(std::span<const double> p_values) {
  struct Place {
    double p_value;
    std::uint32_t n;
  };
  std::vector<Place> order(p_values.size());
  for (std::uint32_t n = 0; n < order.size(); ++n) {
    order[n] = {p_values[n], n};
  }
  std::ranges::sort(order, {}, &Place::p_value);
  std::vector<double> rates(p_values.size());
  const auto all = static_cast<double>(p_values.size());
  double smallest = 1;
  for (std::size_t rank = order.size(); rank-- > 0;) {
    smallest = std::min(smallest, order[rank].p_value * all / static_cast<double>(rank + 1));
    rates[order[rank].n] = smallest;
  }
  return rates;
}

}  // namespace ptick::compare
