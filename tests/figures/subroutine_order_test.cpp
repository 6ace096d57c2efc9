#include "figures/subroutine_order.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace ptick {

namespace {

struct Call {
  std::string_view times;
  std::string_view name;
};

TEST(SubroutineOrder, PutsLargeCountsFirstAndEqualOnesInReverseOrderOfArrival) {
  struct Row {
    std::vector<Call> calls;
    std::vector<std::string> want_times;
    std::vector<std::string> want_called;
  };
  const std::vector<Row> rows = {
      {{}, {}, {}},
      {{{"5", "A"}}, {"5"}, {"A"}},
      {{{"5", "A"}, {"12", "B"}, {"7", "C"}}, {"12", "7", "5"}, {"B", "C", "A"}},
      {{{"5", "A"}, {"5", "B"}, {"5", "A"}}, {"5", "5", "5"}, {"A", "B", "A"}},
      {{{"5", "A"}, {"5", "B"}, {"9", "C"}, {"5", "D"}},
       {"9", "5", "5", "5"},
       {"C", "D", "B", "A"}},
      {{{"9", "A"}, {"10", "B"}, {"100", "C"}}, {"100", "10", "9"}, {"C", "B", "A"}},
      {{{"05", "A"}, {"5", "B"}, {"5.0", "C"}}, {"5.0", "5", "05"}, {"C", "B", "A"}},
      {{{"1", "A"}, {"", "B"}, {"abc", "C"}, {"0", "D"}, {"-1", "E"}},
       {"1", "0", "abc", "", "-1"},
       {"A", "D", "C", "B", "E"}},
      {{{"1.5", "A"}, {"2", "B"}, {"1", "C"}}, {"2", "1.5", "1"}, {"B", "A", "C"}},
      {{{"1", ""}, {"2", ""}}, {"2", "1"}, {"", ""}},
      {{{"9007199254740992", "A"}, {"9007199254740993", "B"}},
       {"9007199254740993", "9007199254740992"},
       {"B", "A"}},
  };
  for (const Row& row : rows) {
    SubroutineTable subroutines;
    for (const Call& call : row.calls) {
      subroutines.Add({.caller = "", .called = call.name, .times = call.times}, false);
    }
    std::vector<std::string> times;
    std::vector<std::string> called;
    for (const std::size_t n : SubroutineOrder(subroutines)) {
      subroutines.AppendTimes(n, times.emplace_back());
      called.emplace_back(subroutines.Called(n));
    }
    EXPECT_EQ(times, row.want_times);
    EXPECT_EQ(called, row.want_called);
  }
}

}  // namespace

}  // namespace ptick
