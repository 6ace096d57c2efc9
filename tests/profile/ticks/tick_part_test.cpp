// Parts that threads have filled, joined: as if one thread had added all entries, run by run.

#include "profile/ticks/tick_part.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "profile/ticks/ordered_ticks.h"
#include "support/profiles.h"

namespace ptick {

namespace {

struct Texts {
  std::string program;
  std::string line;
  std::string ticks;
};

Texts RandomTexts(std::mt19937& random) {
  static const std::vector<std::string> ticks = {"0",    "1",    "1",    "2",         "007",
                                                 "4095", "4096", "5000", "-3",        "",
                                                 "x",    "1.50", "2e9",  "4294967296"};
  static const std::vector<std::string> lines = {"1", "2", "3", "007", "", "x", "4294967295"};
  return {std::string(1, static_cast<char>('A' + random() % 9)), lines[random() % lines.size()],
          ticks[random() % ticks.size()]};
}

std::string NamesOf(const TickTable& table) {
  std::string names;
  for (NameTable::Id id = 0; id < table.Programs().size(); ++id) {
    names += std::string(table.Programs()[id]) + " ";
  }
  return names;
}

TEST(TickPart, JoinsRunsInTheirOrder) {
  std::mt19937 random(1);  // the same numbers every time
  for (int round = 0; round < 300; ++round) {
    TickTable one;
    TickTable joined;
    std::vector<TickPart> parts(1 + random() % 4);
    for (std::uint32_t run = 0, runs = static_cast<std::uint32_t>(random() % 30); run < runs;
         ++run) {
      TickPart& part = parts[random() % parts.size()];
      for (auto left = random() % 40; left > 0; --left) {
        const Texts texts = RandomTexts(random);
        one.Add(texts.program, texts.line, texts.ticks);
        (run == 0 ? joined : part.Table()).Add(texts.program, texts.line, texts.ticks);
      }
      if (run > 0) {
        part.EndRun(run);
      }
    }
    JoinTicks(joined, std::move(parts));
    ASSERT_EQ(NamesOf(joined), NamesOf(one));
    ASSERT_EQ(joined.CountSmall(), one.CountSmall());
    const SortOrder order = round % 2 == 0 ? SortOrder::kAscending : SortOrder::kDescending;
    const bool per_program = round % 4 > 1;
    ASSERT_EQ(testing::RowTexts(std::move(joined), order, per_program),
              testing::RowTexts(std::move(one), order, per_program))
        << "round " << round;
  }
}

TEST(TickPart, VisitsEveryEntryOnce) {
  TickTable table;
  table.Add("A", "1", "5");
  std::vector<TickPart> parts(2);
  parts[1].Table().Add("B", "2", "5");
  parts[1].EndRun(1);
  parts[0].Table().Add("A", "3", "4096");
  parts[0].Table().Add("B", "4", "0.5");
  parts[0].EndRun(2);
  JoinTicks(table, std::move(parts));
  std::size_t count = 0;
  table.ForEach([&count](const TickEntry& /*entry*/) { ++count; });
  EXPECT_EQ(count, 4U);
}

}  // namespace

}  // namespace ptick
