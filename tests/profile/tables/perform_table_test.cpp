#include "profile/tables/perform_table.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

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

PerformLine Line(std::uint32_t ticks, std::string_view command) {
  PerformLine line;  // NOLINT(*-member-init): filled below
  line.numbers.fill(kNoOrdinaryNumber);
  line.numbers[static_cast<std::size_t>(PerformNumber::kTicks)] = ticks;
  line.type = "qry";
  line.command = command;
  return line;
}

TEST(PerformTable, TakesLinesTogetherAsIfOneByOne) {
  PerformTable performs;
  performs.Add(Texts("5", "qry", "LIST"), true);
  performs.Add(std::vector{Line(7, "WHO"), Line(0, "LIST"), Line(kNoOrdinaryNumber, "WHO")});
  ASSERT_EQ(performs.RecordCount(), 4U);
  std::string text;
  performs.ForEachRecord([&text](const PerformTable::Record& record) {
    text.append(record.Command()).append(record.Text(PerformNumber::kTicks)).append(" ");
  });
  EXPECT_EQ(text, "LIST5 WHO7 LIST0 WHO ");
  EXPECT_EQ(performs.TimesOf(0), 2U);
  EXPECT_EQ(performs.TimesOf(1), 2U);
  EXPECT_EQ(performs.Types().size(), 1U);
}

TEST(PerformTable, CountsCommandsTogether) {
  PerformTable performs;
  performs.Count(std::vector<std::string_view>{"A", "B", "A", "A"});
  performs.Count(std::vector<std::string_view>{});
  EXPECT_EQ(performs.Count(), 4U);
  EXPECT_EQ(performs.TimesOf(0), 3U);
  EXPECT_EQ(performs.TimesOf(1), 1U);
  EXPECT_EQ(performs.RecordCount(), 0U);
}

}  // namespace

}  // namespace ptick
