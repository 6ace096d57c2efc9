#include "ptick_export/facts/whole_calls.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace ptick::exports {

namespace {

TEST(WholeTimes, AreCutAndAboveZero) {
  struct Row {
    Number times;
    std::optional<std::int64_t> want;
    std::uint64_t CallLosses::*loss;
  };
  const std::vector<Row> rows = {
      {std::int64_t{12}, 12, nullptr},
      {std::numeric_limits<std::int64_t>::max(), std::numeric_limits<std::int64_t>::max(), nullptr},
      {2.75, 2, &CallLosses::cut},
      {0.75, std::nullopt, &CallLosses::below_one},
      {std::int64_t{0}, std::nullopt, &CallLosses::below_one},
      {std::int64_t{-1}, std::nullopt, &CallLosses::negative},
      {-0.5, std::nullopt, &CallLosses::negative},
      {1e30, std::nullopt, &CallLosses::too_large},
  };
  for (const Row& row : rows) {
    CallLosses losses;
    EXPECT_EQ(WholeTimes(row.times, losses), row.want);
    std::uint64_t lost = 0;
    for (const auto loss : {&CallLosses::cut, &CallLosses::below_one, &CallLosses::negative,
                            &CallLosses::too_large}) {
      lost += losses.*loss;
    }
    EXPECT_EQ(lost, row.loss == nullptr ? 0U : 1U);
    if (row.loss != nullptr) {
      EXPECT_EQ(losses.*row.loss, 1U);
    }
  }
}

}  // namespace

}  // namespace ptick::exports
