#include <gtest/gtest.h>

#include <set>
#include <string>

#include "model/model_cases.h"
#include "model/model_tables.h"
#include "model/random_profile.h"
#include "profile/tables/record_types.h"
#include "value/list_operations.h"
#include "value/text.h"

// What the random profiles never contain, no comparison looks at.

namespace ptick::model {

namespace {

/// What a number of random profiles leave in the tables, in all.
struct Harvest {
  std::set<std::string> types;
  std::size_t invalid = 0;
  std::size_t ties = 0;
  std::size_t long_lines = 0;
  std::size_t long_performs = 0;
  std::string KeyScript;
  std::string Performs;
  std::set<std::string> ticks;
};

void GatherLine(const std::string& line, Harvest& harvest) {
  const std::string trimmed = Trim(line, '\t');
  harvest.types.insert(LowerCase(Field(Substring(trimmed, 9, Len(trimmed)), '\t', 1).text));
  harvest.long_lines += line.size() > 300 ? 1U : 0U;
  harvest.long_performs += DCount(line, '\t') > 1001 ? 1U : 0U;
}

void GatherTables(const ModelTables& tables, Harvest& harvest) {
  const ValueList& ticks = tables.Details.front().ticks;
  for (std::size_t i = 0; i < ticks.size(); ++i) {
    harvest.ties += i > 0 && ticks[i - 1] == ticks[i] ? 1U : 0U;
    harvest.ticks.insert(ticks[i].Text());
  }
  for (const Value& line : tables.KeyScript) {
    harvest.KeyScript += line.Text() + "\n";
  }
  for (const Value& entry : tables.Performs) {
    harvest.Performs += entry.Text() + "\n";
  }
}

Harvest GatherProfiles(std::uint64_t count) {
  Harvest harvest;
  for (std::uint64_t seed = 0; seed < count; ++seed) {
    RandomSource random(seed);
    const std::vector<std::string> lines = LinesOf(RandomProfile(random));
    for (const std::string& line : lines) {
      GatherLine(line, harvest);
    }
    ModelTables tables;
    RunOptions options;
    options.KeyScriptFile = "keys";
    options.TypeRateOption = true;
    harvest.invalid += ParseModelLines(lines, options, tables) ? 1U : 0U;
    GatherTables(tables, harvest);
  }
  return harvest;
}

TEST(RandomProfiles, ReachWhatThereIsToCompare) {
  const Harvest harvest = GatherProfiles(1000);
  for (const RecordType& type : RecordTypes()) {
    EXPECT_TRUE(harvest.types.contains(std::string(type.name))) << type.name;
  }
  for (const char* ticks : {"", "007", "1.50", "-3", "+4", "abc", "9223372036854775808", "0.000001",
                            "4294967295", "4294967296"}) {
    EXPECT_TRUE(harvest.ticks.contains(ticks)) << ticks;
  }
  EXPECT_GT(harvest.invalid, 10U);
  EXPECT_LT(harvest.invalid, 200U);
  EXPECT_GT(harvest.ties, 1000U);
  EXPECT_GT(harvest.long_lines, 100U);
  EXPECT_GT(harvest.long_performs, 3U);
  for (const char* line : {"SLEEP ", "TYPEDELAY ", "\"\n", "NOCR\n", "~009", "~\"", "~~", "~252"}) {
    EXPECT_NE(harvest.KeyScript.find(line), std::string::npos) << line;
  }
  for (const char* command : {"LIST X\n", "\xFDls -l\n", "RUN\tIT\n", "A\xFC"}) {
    EXPECT_NE(harvest.Performs.find(command), std::string::npos) << Shown(command);
  }
}

}  // namespace

}  // namespace ptick::model
