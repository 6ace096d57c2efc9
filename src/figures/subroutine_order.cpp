#include "figures/subroutine_order.h"

#include <algorithm>

namespace ptick {

std::vector<std::size_t> SubroutineOrder(const SubroutineTable& subroutines) {
  struct Call {
    Number times;
    std::size_t index;
  };
  std::vector<Call> calls(subroutines.Count());
  for (std::size_t n = 0; n < calls.size(); ++n) {
    calls[n] = {subroutines.Times(n), n};
  }
  std::ranges::sort(calls, [](const Call& a, const Call& b) {
    const int compared = CompareNumbers(a.times, b.times);
    return compared != 0 ? compared > 0 : a.index > b.index;
  });
  std::vector<std::size_t> order(calls.size());
  std::ranges::transform(calls, order.begin(), &Call::index);
  return order;
}

}  // namespace ptick
