#include <gtest/gtest.h>

#include <string>

#include "model/comparison.h"
#include "model/model_cases.h"
#include "model/random_fields.h"

namespace ptick::model {

namespace {

// Entries nearly in the opposite of their final order, which keeps the inserts of the model near
// the front of its lists.
std::string ManyEntries(std::size_t count, bool ascending, RandomSource& random) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t ticks = (ascending ? count - i : i) / 10 + random.Below(4);
    text += "PROFILE:trace\tP" + std::to_string(random.Below(3)) + "\t" + std::to_string(i) + "\t" +
            std::to_string(ticks) + (random.Chance(1) ? ".5" : "") + "\n";
  }
  return text;
}

// Entries are collected in chunks of 65536.
TEST(BigTables, AgreeOnMoreEntriesThanAChunkHolds) {
  for (const bool ascending : {false, true}) {
    for (const std::size_t count : {65535U, 65536U, 65537U, 131073U}) {
      RunBigCase([=](RandomSource& random) {
        RunOptions options;
        options.TickOrder = ascending ? SortOrder::kAscending : SortOrder::kDescending;
        options.PerProgram = count % 2 == 0;
        return Case{{ManyEntries(count, ascending, random)}, [=](const Texts& texts) {
                      return ParseDifference(texts.front(), options, {});
                    }};
      });
    }
  }
}

TEST(BigTables, AgreeOnHundredsOfPrograms) {
  RunCases(20, [](RandomSource& random) {
    RunOptions options = RandomOptions(random);
    options.PerProgram = true;
    const std::size_t programs = random.Between(95, 400);
    std::string text;
    for (std::size_t i = 0; i < 2 * programs; ++i) {
      text += "PROFILE:trace\tP" + std::to_string(random.Below(programs)) + "\t1\t";
      text += RandomTicks(random) + "\n";
    }
    return Case{{text}, [=](const Texts& texts) {
                  return ParseDifference(texts.front(), options, {}) +
                         LineReportDifference(texts.front(), options);
                }};
  });
}

}  // namespace

}  // namespace ptick::model
