#include "reports/subroutine_order.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace ptick {

void OrderSubroutines(ProfileTables& tables) {
  struct Call {
    Number times;
    std::size_t index;
  };
  std::vector<Call> calls(tables.SubroutineTimes.size());
  for (std::size_t i = 0; i < calls.size(); ++i) {
    calls[i] = {Value(tables.SubroutineTimes[i]).AsNumber(), i};
  }
  std::ranges::sort(calls, [](const Call& a, const Call& b) {
    const int compared = CompareNumbers(a.times, b.times);
    return compared != 0 ? compared > 0 : a.index > b.index;
  });
  FieldList times;
  FieldList called;
  for (const Call& call : calls) {
    times.Append(tables.SubroutineTimes[call.index]);
    called.Append(tables.SubroutinesCalled[call.index]);
  }
  tables.SubroutineTimes = std::move(times);
  tables.SubroutinesCalled = std::move(called);
}

}  // namespace ptick
