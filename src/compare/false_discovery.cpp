#include "compare/false_discovery.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <numeric>

namespace ptick::compare {

// The k-th smallest of m p-values is taken times m / k, and no rate may be above that of a larger
// p-value.
std::vector<double> FalseDiscoveryRates(std::span<const double> p_values) {
  std::vector<std::uint32_t> order(p_values.size());
  std::iota(order.begin(), order.end(), std::uint32_t{0});
  std::ranges::sort(order, {}, [&](std::uint32_t n) { return p_values[n]; });
  std::vector<double> rates(p_values.size());
  const auto all = static_cast<double>(p_values.size());
  double smallest = 1;
  for (std::size_t rank = order.size(); rank-- > 0;) {
    const std::uint32_t n = order[rank];
    smallest = std::min(smallest, p_values[n] * all / static_cast<double>(rank + 1));
    rates[n] = smallest;
  }
  return rates;
}

}  // namespace ptick::compare
