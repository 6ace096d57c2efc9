#include <gtest/gtest.h>

#include <string>

#include "model/line_difference.h"
#include "model/model_cases.h"
#include "model/random_fields.h"
#include "model/table_description.h"
#include "model/typed_run.h"

// Trace lines of the usual form take a quick way into the table. A line that differs from the usual
// form in what means nothing goes the long way and must arrive as the same entry.

namespace ptick::model {

namespace {

std::string Parsed(const std::string& line, const std::string& next) {
  ProfileTables tables;
  const Ran ran = ParseTyped(line + next, {}, {}, tables);
  return ran.terminal + Describe(tables, {});
}

// Lengths around the 64 bytes that the quick way looks at, digits around the 7 that it reads.
std::string RandomTraceLine(RandomSource& random) {
  std::string name = random.Chance(50) ? RandomName(random) : std::string(random.Below(60), 'N');
  if (random.Chance(20)) {
    name += random.Chance(50) ? RandomText(random) : std::string(1, '\x0B');
  }
  const std::string line =
      random.Chance(70) ? random.Digits(random.Between(1, 9)) : RandomLineNumber(random);
  const std::string ticks =
      random.Chance(70) ? random.Digits(random.Between(1, 9)) : RandomTicks(random);
  return "PROFILE:trace\t" + name + "\t" + line + "\t" + ticks;
}

std::string RandomNext(RandomSource& random) {
  switch (random.Below(4)) {
    case 0:
      return "";
    case 1:
      return "\n";
    case 2:
      return "\n\t0\t0\n";
    default:
      return "\nPROFILE:trace\tNEXT\t1\t2\n";
  }
}

TEST(TracePaths, LeaveTheSameEntry) {
  RunCases(4000, [](RandomSource& random) {
    const std::string next = RandomNext(random);
    return Case{{RandomTraceLine(random)}, [next](const Texts& texts) {
                  const std::string& line = texts.front();
                  std::string capital = line;
                  capital.replace(capital.find("trace"), 5, "Trace");
                  const std::string quick = Parsed(line, next);
                  return FirstDifference(Parsed("\t" + line, next), quick) +
                         FirstDifference(Parsed(line + "\t", next), quick) +
                         FirstDifference(Parsed(capital, next), quick);
                }};
  });
}

}  // namespace

}  // namespace ptick::model
