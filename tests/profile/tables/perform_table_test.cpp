#include "profile/tables/perform_table.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace ptick {

namespace {

PerformTexts Texts(std::string_view ticks, std::string_view type, std::string_view command) {
  PerformTexts texts;
  texts[PerformNumber::kTicks] = ticks;
  texts.type = type;
  texts.command = command;
  return texts;
}

TEST(PerformTable, CountsEachCommandAndKeepsRecordsInOrder) {
  PerformTable performs;
  performs.Add(Texts("5", "qry", "LIST"), true);
  performs.Add(Texts("007", "sh", "WHO"), true);
  performs.Add(Texts("", "qry", "LIST"), true);
  EXPECT_EQ(performs.Count(), 3U);
  ASSERT_EQ(performs.Commands().size(), 2U);
  EXPECT_EQ(performs.TimesOf(0), 2U);
  EXPECT_EQ(performs.TimesOf(1), 1U);
  ASSERT_EQ(performs.RecordCount(), 3U);
  EXPECT_EQ(performs[1].Text(PerformNumber::kTicks), "007");
  EXPECT_EQ(performs[1].AsNumber(PerformNumber::kTicks), Number(std::int64_t{7}));
  EXPECT_EQ(performs[1].Type(), "sh");
  EXPECT_EQ(performs[1].Command(), "WHO");
  EXPECT_EQ(performs[2].Command(), "LIST");
  EXPECT_EQ(performs[2].Text(PerformNumber::kTicks), "");
  EXPECT_EQ(performs[2].Text(PerformNumber::kStartClock), "");
}

TEST(PerformTable, CountsWhatItDoesNotKeep) {
  PerformTable performs;
  performs.Add(Texts("5", "qry", "LIST"), false);
  performs.Add(Texts("5", "qry", "LIST"), false);
  EXPECT_EQ(performs.RecordCount(), 0U);
  EXPECT_EQ(performs.Count(), 2U);
  EXPECT_EQ(performs.TimesOf(0), 2U);
}

}  // namespace

}  // namespace ptick
