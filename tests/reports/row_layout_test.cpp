#include "reports/row_layout.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ptick {

namespace {

struct Sample {
  std::string_view program;
  std::string_view line;
  std::string_view ticks;
};

OrderedTicks MakeTicks(const std::vector<Sample>& samples) {
  TickTable table;
  for (const Sample& sample : samples) {
    table.Add(sample.program, sample.line, sample.ticks);
  }
  return {std::move(table), SortOrder::kDescending, false};
}

std::vector<std::string> Rows(const OrderedTicks& ticks, RowLayout& layout) {
  std::vector<std::string> rows;
  ticks.ForEach(0, [&](const TickEntry& entry) {
    std::string row(static_cast<std::size_t>(kRowWidth), '?');
    layout.LayOut(entry, row.data());
    rows.push_back(row);
  });
  return rows;
}

std::string OnlyRow(const Sample& sample, const Value& total) {
  const OrderedTicks ticks = MakeTicks({sample});
  RowLayout layout(ticks, total);
  layout.StartList();
  return Rows(ticks, layout).front();
}

TEST(Columns, AreLeftJustifiedWithABlankBetween) {
  EXPECT_EQ(LayOutColumns("Source name", "Line#", "Ticks", "%"),
            "Source name          Line#  Ticks    %     ");
  EXPECT_EQ(LayOutColumns("", "", "--------", "--------"),
            "                            -------- ------");
  EXPECT_EQ(LayOutColumns("", "", "", ""), std::string(43, ' '));
  EXPECT_EQ(LayOutColumns(std::string(30, 'n'), std::string(30, 'l'), std::string(30, 't'),
                          std::string(30, 'p')),
            "nnnnnnnnnnnnnnnnnnnn llllll tttttttt pppppp");
}

TEST(RowLayout, ShowsTheTextsOfAnEntry) {
  struct Row {
    Sample entry;
    std::string_view total;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {{"PROG", "10", "3"}, "12", "PROG                 10     3        25    "},
      {{"PROG", "0", "0"}, "12", "PROG                 0      0        0     "},
      {{"PROG", "9999", "1"}, "1", "PROG                 9999   1        100   "},
      {{"PROG", "10000", "1"}, "1", "PROG                 10000  1        100   "},
      {{"PROG", "123456", "12345678"}, "12345678", "PROG                 123456 12345678 100   "},
      // What is too long for its column is cut.
      {{"A.NAME.OF.TWENTY.ONE.", "1", "1"}, "1", "A.NAME.OF.TWENTY.ONE 1      1        100   "},
      {{"PROG", "1234567", "1"}, "1", "PROG                 123456 1        100   "},
      {{"PROG", "1", "123456789"}, "123456789", "PROG                 1      12345678 100   "},
      {{"PROG", "1", "100000"}, "3", "PROG                 1      100000   333333"},
      {{"PROG", "2147483648", "4294967296"},
       "4294967296",
       "PROG                 214748 42949672 100   "},
      // Unusual texts are shown as they were read; what is not numeric counts as 0.
      {{"PROG", "007", "003"}, "12", "PROG                 007    003      25    "},
      {{"PROG", "", ""}, "12", "PROG                                 0     "},
      {{"", "1", "3"}, "12", "                     1      3        25    "},
      {{"PROG", "x y", "abc"}, "12", "PROG                 x y    abc      0     "},
      {{"PROG", "1", "1.50"}, "12", "PROG                 1      1.50     12.5  "},
      {{"PROG", "1", "-1"}, "3", "PROG                 1      -1       -33.33"},
      {{"PROG", "1", "+3"}, "12", "PROG                 1      +3       25    "},
      {{"PROG", "1", "0.001"}, "12", "PROG                 1      0.001    0     "},
      {{"\x01\xfd", "\t", "3"}, "12", "\x01\xfd                   \t      3        25    "},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(OnlyRow(row.entry, row.total), row.want) << row.entry.line << " " << row.entry.ticks;
  }
}

// The percentage column of one row.
std::string Percent(std::string_view ticks, const Value& total) {
  std::string percent = OnlyRow({"P", "1", ticks}, total).substr(37);
  percent.erase(percent.find_last_not_of(' ') + 1);
  return percent;
}

TEST(RowLayout, CutsPercentagesToTwoDecimals) {
  struct Row {
    std::string_view ticks;
    Value total;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {"1", "3", "33.33"},
      {"2", "3", "66.66"},
      {"3", "3", "100"},
      {"1", "8", "12.5"},
      {"5", "3", "166.66"},
      {"1", "10000", "0.01"},
      {"1", "10001", "0"},
      {"29", "100", "29"},
      {"57", "100", "57"},
      {"1", "-3", "-33.33"},
      {"1", "007", "14.28"},
      {"1", "3.0", "33.33"},
      {"1", "1.5", "66.66"},
      {"1", "0.3", "333.33"},
      {"3", "0.3", "1000"},
      {"0.3", "0.1", "300"},
      {"1.5", "3", "50"},
      // Without a total there is no share.
      {"1", "0", "0"},
      {"1", "", "0"},
      {"1", Value(), "0"},
      {"1", "abc", "0"},
      {"1.5", "0", "0"},
      {"1.5", "", "0"},
      // Figures at the bounds of what is held as numbers.
      {"4294967295", "4294967295", "100"},
      {"4294967295", "4294967296", "99.99"},
      {"4294967296", "4294967296", "100"},
      {"4294967295", "9223372036854775807", "0"},
      {"9223372036854775807", "9223372036854775807", "100"},
      {"4611686018427387904", "9223372036854775808", "50"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Percent(row.ticks, row.total), row.want) << row.ticks << " of " << row.total.Text();
  }
}

/// A number of hundredths in its plain form.
std::string Plain(int hundredths) {
  std::string text = std::to_string(hundredths / 100);
  if (hundredths % 100 != 0) {
    text += "." + std::to_string(hundredths % 100 / 10);
    text += hundredths % 10 != 0 ? std::to_string(hundredths % 10) : "";
  }
  return text;
}

TEST(RowLayout, CutsEveryShareOfEverySmallTotal) {
  for (int total = 1; total <= 250; ++total) {
    for (int ticks = 0; ticks <= total; ++ticks) {
      ASSERT_EQ(Percent(std::to_string(ticks), total), Plain(ticks * 10000 / total))
          << ticks << " of " << total;
    }
  }
}

/// The name column of each row, without its padding.
std::vector<std::string> NameColumns(const OrderedTicks& ticks, RowLayout& layout) {
  std::vector<std::string> names = Rows(ticks, layout);
  for (std::string& name : names) {
    name.resize(20);
    name.erase(name.find_last_not_of(' ') + 1);
  }
  return names;
}

TEST(RowLayout, ShowsANameWhereItDiffersFromTheRowBefore) {
  struct Row {
    std::vector<Sample> samples;
    std::vector<std::string> want;
  };
  const std::vector<Row> rows = {
      {{{"A", "1", "9"}, {"B", "1", "8"}, {"A", "1", "7"}}, {"A", "B", "A"}},
      {{{"A", "1", "9"}, {"A", "2", "8"}, {"B", "1", "7"}, {"B", "1", "6"}}, {"A", "", "B", ""}},
      {{{"A", "1", "9"}, {"a", "1", "8"}, {"A ", "1", "7"}}, {"A", "a", "A"}},
      {{{"", "1", "9"}, {"A", "1", "8"}, {"", "1", "7"}, {"A", "1", "6"}}, {"", "A", "", "A"}},
      {{{"A", "007", "9"}, {"A", "1", "8.5"}, {"A", "1", "8"}}, {"A", "", ""}},
      // Names that look alike once they are cut are two names still.
      {{{"A.NAME.OF.TWENTY.ONE.", "1", "9"}, {"A.NAME.OF.TWENTY.ONE?", "1", "8"}},
       {"A.NAME.OF.TWENTY.ONE", "A.NAME.OF.TWENTY.ONE"}},
  };
  for (const Row& row : rows) {
    const OrderedTicks ticks = MakeTicks(row.samples);
    RowLayout layout(ticks, 10);
    layout.StartList();
    EXPECT_EQ(NameColumns(ticks, layout), row.want);
    layout.StartList();
    EXPECT_EQ(NameColumns(ticks, layout), row.want) << "in a second list";
  }
}

TEST(RowLayout, ShowsTheNameAgainInTheNextList) {
  const OrderedTicks ticks = MakeTicks({{"A", "1", "9"}, {"A", "2", "8"}});
  RowLayout layout(ticks, 10);
  layout.StartList();
  EXPECT_EQ(NameColumns(ticks, layout), (std::vector<std::string>{"A", ""}));
  layout.StartList();
  EXPECT_EQ(NameColumns(ticks, layout), (std::vector<std::string>{"A", ""}));
}

TEST(RowLayout, AddsUpTicksAndThePercentagesShown) {
  struct Row {
    int rows;
    std::string_view ticks;
    std::string_view total;
    std::string_view want_ticks;
    std::string_view want_percent;
  };
  const std::vector<Row> rows = {
      {0, "1", "3", "0", "0"},        {3, "1", "3", "3", "99.99"},
      {60, "1", "1000", "60", "6"},   {20, "402", "10000", "8040", "80.4"},
      {4, "1.5", "3", "6", "200"},    {3, "007", "21", "21", "99.99"},
      {2, "abc", "3", "0", "0"},      {3, "-1", "3", "-3", "-99.99"},
      {3, "0.1", "3", "0.3", "9.99"}, {3, "4294967295", "4294967295", "12884901885", "300"},
      {3, "5", "0", "15", "0"},       {2, "9223372036854775807", "1", "18446744073709551616", ""},
  };
  for (const Row& row : rows) {
    const OrderedTicks ticks =
        MakeTicks(std::vector<Sample>(static_cast<std::size_t>(row.rows), {"P", "1", row.ticks}));
    RowLayout layout(ticks, row.total);
    for (int list = 1; list <= 2; ++list) {
      layout.StartList();
      Rows(ticks, layout);
      EXPECT_EQ(layout.SubtotalTicks().Text(), row.want_ticks) << row.ticks << " of " << row.total;
      if (!row.want_percent.empty()) {
        EXPECT_EQ(layout.SubtotalPercent().Text(), row.want_percent)
            << row.ticks << " of " << row.total;
      }
    }
  }
}

// Rows of the same ticks follow each other; whatever is kept from one for the next, each is right.
TEST(RowLayout, TakesUsualAndUnusualTicksInTurn) {
  const OrderedTicks ticks = MakeTicks(
      {{"P", "1", "3"}, {"P", "2", "3"}, {"P", "3", "3.0"}, {"P", "4", "3"}, {"P", "5", "03"}});
  RowLayout layout(ticks, 12);
  layout.StartList();
  EXPECT_EQ(Rows(ticks, layout), (std::vector<std::string>{
                                     "P                    5      03       25    ",
                                     "                     4      3        25    ",
                                     "                     3      3.0      25    ",
                                     "                     2      3        25    ",
                                     "                     1      3        25    ",
                                 }));
  EXPECT_EQ(layout.SubtotalTicks().Text(), "15");
  EXPECT_EQ(layout.SubtotalPercent().Text(), "125");
}

}  // namespace

}  // namespace ptick
