#include "ptick_export/facts/run_time.h"

#include <gtest/gtest.h>

#include <optional>
#include <string_view>
#include <vector>

#include "ptick_export/support/exported.h"
#include "support/profiles.h"

namespace ptick::exports {

namespace {

using ptick::testing::Parse;
using testing::RecordsOf;

TEST(RunTime, IsByClocksElseByTimes) {
  struct Row {
    std::vector<std::string_view> records;
    std::optional<std::int64_t> start;
    std::optional<std::int64_t> duration;
  };
  const std::vector<Row> rows = {
      {{"ticks|1"}, std::nullopt, std::nullopt},
      {{"starttime|1773043331"}, 1773043331'000'000'000, std::nullopt},
      {{"starttime|x", "endtime|5"}, std::nullopt, std::nullopt},
      {{"starttime|5", "endtime|7"}, 5'000'000'000, 2'000'000'000},
      {{"starttime|7", "endtime|5"}, 7'000'000'000, std::nullopt},
      {{"starttime|99999999999"}, std::nullopt, std::nullopt},
      {{"hertz|100", "startclock|500", "endclock|650"}, std::nullopt, 1'500'000'000},
      {{"hertz|100", "startclock|500", "endclock|650", "starttime|5", "endtime|7"},
       5'000'000'000,
       1'500'000'000},
      {{"hertz|0", "startclock|500", "endclock|650", "starttime|5", "endtime|7"},
       5'000'000'000,
       2'000'000'000},
      {{"hertz|100", "startclock|500", "starttime|5", "endtime|7"}, 5'000'000'000, 2'000'000'000},
      {{"hertz|100", "startclock|650", "endclock|500", "starttime|5", "endtime|7"},
       5'000'000'000,
       2'000'000'000},
  };
  for (const Row& row : rows) {
    const auto parsed = Parse(RecordsOf(row.records));
    EXPECT_EQ(StartNanoseconds(*parsed.tables), row.start) << RecordsOf(row.records);
    EXPECT_EQ(DurationNanoseconds(*parsed.tables), row.duration) << RecordsOf(row.records);
  }
}

}  // namespace

}  // namespace ptick::exports
