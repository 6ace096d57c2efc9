#include "figures/perform_summary.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "support/report_run.h"

namespace ptick {

namespace {

std::string Summary(const PerformTable& performs) {
  std::string text;
  for (const PerformedCommand& performed : SummarizePerforms(performs)) {
    text += std::to_string(performed.times) + "=" + std::string(performed.command) + "|";
  }
  return text;
}

TEST(PerformSummary, OrdersByCountThenText) {
  struct Row {
    std::vector<std::string_view> commands;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {{}, ""},
      {{"A"}, "1=A|"},
      {{"SORT Y", "LIST X", "LIST X", "LIST X"}, "3=LIST X|1=SORT Y|"},
      {{"B", "A", "B", "A"}, "2=A|2=B|"},
      {{"list", "LIST", "list"}, "2=list|1=LIST|"},
      {{"01", "1", "1.0"}, "1=01|1=1|1=1.0|"},
      {{"a*b", "a*b", "*", "**"}, "2=a*b|1=*|1=**|"},
      {{"2*Z", "1*A", "10*B"}, "1=1*A|1=10*B|1=2*Z|"},
      {{"ab", "a", "a b", "a*"}, "1=a|1=a b|1=a*|1=ab|"},
      {{"\xff", "\x7f", "\xfc", "\x01", " "}, "1=\x01|1= |1=\x7f|1=\xfc|1=\xff|"},
      {{" A", "A ", "A"}, "1= A|1=A|1=A |"},
  };
  for (const Row& row : rows) {
    std::vector<PerformSample> performs;
    for (const std::string_view command : row.commands) {
      performs.push_back(MakePerform(command));
    }
    EXPECT_EQ(Summary(Performs(performs)), row.want) << row.want;
  }
}

TEST(PerformSummary, OrdersCountsAsNumbers) {
  std::vector<PerformSample> performs;
  for (const int times : {9, 10, 99, 100, 2}) {
    for (int n = 0; n < times; ++n) {
      performs.push_back(MakePerform("C" + std::to_string(times)));
    }
  }
  EXPECT_EQ(Summary(Performs(performs)), "100=C100|99=C99|10=C10|9=C9|2=C2|");
}

TEST(PerformSummary, CountsCommandsWhateverElseAnEntryHolds) {
  const PerformTable performs = Performs({{"1", "2", "3", "4", "5", "A", "X"}, MakePerform("X")});
  EXPECT_EQ(Summary(performs), "2=X|");
}

TEST(PerformSummary, KeepsCommandsOfManyAsterisksWhole) {
  const std::string command = "a" + std::string(200000, '*') + "z";
  EXPECT_EQ(Summary(Performs({MakePerform(command)})), "1=" + command + "|");
}

// The sort keys as they are written down: 999999999 less the count in ten digits, the count, the
// text. Ordering the keys must give the same.
TEST(PerformSummary, AgreesWithSortedKeys) {
  std::vector<PerformSample> performs;
  std::vector<std::string> keys;
  unsigned seed = 12345;
  for (int n = 0; n < 300; ++n) {
    std::string command;
    seed = seed * 1664525U + 1013904223U;
    const unsigned times = 1 + (seed >> 20U) % 12;
    for (unsigned bits = seed >> 8U; bits != 0; bits /= 6) {
      command += " *A0\xfc\xff"[bits % 6];
    }
    command += std::to_string(n);
    for (unsigned copy = 0; copy < times; ++copy) {
      performs.push_back(MakePerform(command));
    }
    keys.push_back("0" + std::to_string(999999999U - times) + "*" + std::to_string(times) + "*" +
                   command);
  }
  std::sort(keys.begin(), keys.end());
  std::string want;
  for (const std::string& key : keys) {
    const std::size_t second = key.find('*', 11);
    want += key.substr(11, second - 11) + "=" + key.substr(second + 1) + "|";
  }
  EXPECT_EQ(Summary(Performs(performs)), want);
}

}  // namespace

}  // namespace ptick
