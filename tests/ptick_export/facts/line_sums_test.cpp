#include "ptick_export/facts/line_sums.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "ptick_export/support/exported.h"
#include "support/profiles.h"
#include "value/number_text.h"

namespace ptick::exports {

namespace {

using ptick::testing::Parse;
using ptick::testing::Parsed;
using testing::RecordsOf;

constexpr SumRules kAsTheyAre = {};
constexpr SumRules kWholeAndNumbered = {.whole_ticks = true, .numbered_lines = true};

std::string LineText(const LineSums::Line& line) {
  return line.number ? std::to_string(*line.number) : "'" + std::string(line.text) + "'";
}

/// Each sum as "program:line=ticks", a text that is no number in quotes.
std::string Texts(const LineSums& sums, const ProfileTables& tables) {
  std::string text;
  for (const LineSums::Program& program : sums.Programs()) {
    sums.ForEachLine(program, [&](const LineSums::Line& line) {
      text += (text.empty() ? "" : " ") + std::string(tables.Details.Programs()[program.id]) + ":" +
              LineText(line) + "=" + DecimalText(line.ticks);
    });
  }
  return text;
}

std::string LossText(const LineLosses& losses) {
  std::string text;
  const auto add = [&text](std::string_view name, const TickLoss& loss) {
    if (loss.count > 0) {
      text += (text.empty() ? "" : " ") + std::string(name) + "=" + std::to_string(loss.count) +
              "/" + DecimalText(loss.ticks.Total().AsNumber());
    }
  };
  add("cut", losses.cut);
  add("below", losses.below_one);
  add("negative", losses.negative);
  add("large", losses.too_large);
  add("unnumbered", losses.unnumbered);
  return text;
}

TEST(LineSums, AddUpEntriesOfOneLine) {
  struct Row {
    std::vector<std::string_view> records;
    SumRules rules;
    std::string want;
    std::string losses;
    std::string total;
  };
  const std::vector<Row> rows = {
      {{}, kAsTheyAre, "", "", "0"},
      {{"trace|A|1|5", "trace|A|2|1", "trace|A|1|3"}, kAsTheyAre, "A:1=8 A:2=1", "", "9"},
      // The hungriest program first; of equal ones the one that came last, as in reports.
      {{"trace|A|1|5", "trace|B|9|4", "trace|B|1|4", "trace|C|7|5"},
       kAsTheyAre,
       "B:1=4 B:9=4 C:7=5 A:1=5",
       "",
       "18"},
      {{"trace|A|7|1", "trace|A|007|1", "trace|A|7.0|1", "trace|A|x|1"},
       kAsTheyAre,
       "A:7=1 A:'x'=1 A:'7.0'=1 A:'007'=1",
       "",
       "4"},
      {{"trace|A|7|1", "trace|A|007|1", "trace|A|7.0|1", "trace|A|+7|4"},
       kWholeAndNumbered,
       "A:7=7",
       "",
       "7"},
      {{"trace|A|0|1", "trace|A|x|2", "trace|A|-2|4", "trace|A|1.5|8", "trace|A"},
       kWholeAndNumbered,
       "A:0=15",
       "unnumbered=4/14",
       "15"},
      {{"trace|A|2147483647|1", "trace|A|2147483648|2", "trace|A|4294967295|3",
        "trace|A|02147483648|4", "trace|A|4294967296|5"},
       kWholeAndNumbered,
       "A:0=5 A:2147483647=1 A:2147483648=6 A:4294967295=3",
       "unnumbered=1/5",
       "15"},
      {{"trace|A|2147483648|2", "trace|A|4294967295|3", "trace|A|4294967296|5"},
       kAsTheyAre,
       "A:2147483648=2 A:4294967295=3 A:'4294967296'=5",
       "",
       "10"},
      // Fractions are added before they are cut.
      {{"trace|A|1|0.5", "trace|A|1|0.5", "trace|A|2|2.75", "trace|A|3|0.9", "trace|A|4|0"},
       kWholeAndNumbered,
       "A:1=1 A:2=2",
       "cut=1/0.75 below=2/0.9",
       "3"},
      {{"trace|A|1|0.5", "trace|A|2|0", "trace|A|3|x"},
       kAsTheyAre,
       "A:1=0.5 A:2=0 A:3=0",
       "",
       "0.5"},
      {{"trace|A|1|-5", "trace|A|2|-5", "trace|A|2|7", "trace|A|3|-0.5"},
       kWholeAndNumbered,
       "A:2=2",
       "negative=2/-5.5",
       "2"},
      {{"trace|A|1|-5", "trace|A|2|3"}, kAsTheyAre, "A:2=3", "negative=1/-5", "3"},
      {{"trace|A|1|4294967295", "trace|A|2|4294967294", "trace|A|3|4294967295", "trace|A|3|1"},
       kWholeAndNumbered,
       "A:1=4294967295 A:2=4294967294 A:3=4294967296",
       "",
       "12884901885"},
      {{"trace|A|1|9223372036854775807", "trace|A|2|1", "trace|B|1|9223372036854775808"},
       kWholeAndNumbered,
       "A:1=9223372036854775807",
       "large=2/9223372036854775808",
       "9223372036854775807"},
  };
  for (const Row& row : rows) {
    const std::string input = RecordsOf(row.records);
    const Parsed parsed = Parse(input);
    const LineSums sums(parsed.tables->Details, row.rules);
    EXPECT_EQ(Texts(sums, *parsed.tables), row.want) << input;
    EXPECT_EQ(LossText(sums.Losses()), row.losses) << input;
    EXPECT_EQ(DecimalText(sums.Total()), row.total) << input;
  }
}

TEST(LineSums, AgreeWithSumsInAMap) {
  std::mt19937 random(7);
  const auto pick = [&random](int count) {
    return std::uniform_int_distribution<int>(0, count - 1)(random);
  };
  for (int round = 0; round < 50; ++round) {
    std::string profile;
    std::map<std::string, std::map<int, std::int64_t>> want;
    for (int n = pick(400); n > 0; --n) {
      const std::string program(1, static_cast<char>('A' + pick(5)));
      const int line = pick(40);
      const int ticks = pick(6000);
      want[program][line] += ticks;
      profile += "PROFILE:trace\t" + program + "\t" + std::string(pick(9) == 0 ? "0" : "") +
                 std::to_string(line) + "\t" + std::to_string(ticks) + "\n";
    }
    const Parsed parsed = Parse(profile);
    const LineSums sums(parsed.tables->Details, {.whole_ticks = false, .numbered_lines = true});
    std::map<std::string, std::map<int, std::int64_t>> got;
    std::size_t lines = 0;
    for (const LineSums::Program& program : sums.Programs()) {
      sums.ForEachLine(program, [&](const LineSums::Line& line) {
        ++lines;
        got[std::string(parsed.tables->Details.Programs()[program.id])]
           [static_cast<int>(line.number.value())] = std::get<std::int64_t>(line.ticks);
      });
    }
    EXPECT_EQ(got, want);
    EXPECT_EQ(lines, sums.LineCount());
  }
}

}  // namespace

}  // namespace ptick::exports
