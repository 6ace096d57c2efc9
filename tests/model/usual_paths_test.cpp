#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "model/line_difference.h"
#include "model/model_cases.h"
#include "model/random_fields.h"
#include "model/random_records.h"
#include "model/table_description.h"
#include "model/typed_run.h"
#include "support/memory_platform.h"

// Lines of the usual form take a quick way into the tables. A line that differs from the usual form
// in what means nothing goes the long way, and must leave the same there. tables_model_test
// compares with the model what both ways leave.

namespace ptick::model {

namespace {

// Whatever inputs there are, their pauses and delays are shown, too.
const std::string kClocks = "PROFILE:hertz\t100\nPROFILE:startclock\t7\n";

std::string Parsed(const std::string& line, const std::string& next) {
  RunOptions options;
  options.KeyScriptFile = "keys";
  options.TypeRateOption = true;
  ProfileTables tables;
  const Ran ran = ParseTyped(kClocks + line + next, {}, options, tables);
  return ran.terminal + Describe(tables, options);
}

std::string RandomNext(RandomSource& random) {
  switch (random.Below(5)) {
    case 0:
      return "";
    case 1:
      return "\n";
    case 2:
      return "\n\t0\t0\n";
    case 3:
      return "\nPROFILE:input\t13\t1\t5\t6\tx\n";
    default:
      return "\nPROFILE:perform\tticks\t1\tcmd\tNEXT\n";
  }
}

// The line's type in capitals is the same type, but not the usual form.
std::string InCapitals(std::string line) {
  char& letter = line[std::string("PROFILE:").size()];
  letter = static_cast<char>(letter - 'a' + 'A');
  return line;
}

void RunPaths(std::uint64_t count, const std::function<std::string(RandomSource&)>& random_line) {
  RunCases(count, [&](RandomSource& random) {
    const std::string next = RandomNext(random);
    return Case{{random_line(random)}, [next](const Texts& texts) {
                  const std::string& line = texts.front();
                  const std::string quick = Parsed(line, next);
                  return FirstDifference(Parsed("\t" + line, next), quick) +
                         FirstDifference(Parsed(line + "\t", next), quick) +
                         FirstDifference(Parsed(InCapitals(line), next), quick);
                }};
  });
}

// Numbers around the 10 digits that the quick way reads, now and then none.
std::string RandomNumber(RandomSource& random) {
  if (random.Chance(90)) {
    const std::string digits = random.Digits(random.Between(1, random.Chance(80) ? 10 : 17));
    return random.Chance(90) ? "1" + digits.substr(1) : digits;
  }
  return random.Chance(50) ? RandomClock(random) : RandomText(random);
}

// A text of any length, around the 64 bytes that are looked at together.
std::string RandomLength(RandomSource& random) {
  std::string text(random.Chance(50) ? random.Below(20) : random.Below(140), 'x');
  if (random.Chance(20)) {
    text.insert(random.Below(text.size() + 1), RandomText(random));
  }
  return text;
}

std::string RandomPair(RandomSource& random) {
  if (random.Chance(8)) {
    return "\ttype\t" + (random.Chance(70) ? RandomLength(random).substr(0, 18) : "qry");
  }
  if (random.Chance(4)) {
    return "\t" + random.PickWord("c|cm|cab|cmd|cmds|xmd|unknown|Ticks||") + "\t" +
           random.PickWord("cmd|c|1||cab");
  }
  return "\t" + random.PickWord("startclock|endclock|starttime|endtime|ticks|usrcpu|syscpu|type") +
         "\t" + RandomNumber(random);
}

std::string RandomPerformLine(RandomSource& random) {
  std::string line = "PROFILE:perform";
  for (std::size_t pairs = random.Chance(2) ? random.Below(40) : random.Below(10); pairs > 0;
       --pairs) {
    line += RandomPair(random);
  }
  if (random.Chance(95)) {
    line += "\tcmd\t";
    line += random.Chance(20) ? "\xFF" : "";
    line += RandomLength(random);
  }
  return line;
}

std::string RandomCallLine(RandomSource& random) {
  std::string line = "PROFILE:subroutine_call\t";
  line += random.Chance(90) ? std::string(random.Below(35), 'A') : RandomText(random);
  line += random.PickWord(" | | | || A |  ") + std::string(random.Below(35), 'B');
  line += random.Chance(10) ? RandomText(random) : "";
  return line + "\t" + RandomNumber(random) + (random.Chance(5) ? "\tmore" : "");
}

std::string RandomObjectLine(RandomSource& random) {
  const std::string name = random.Chance(20) ? "main()" : "/lib/" + RandomLength(random);
  return "PROFILE:shared_object\t" + name + "\t" +
         (random.Chance(60) ? random.PickWord("1|0|00|1.0|0.0|x|-1") : RandomNumber(random)) +
         (random.Chance(5) ? "\tmore" : "");
}

std::string RandomInputLine(RandomSource& random) {
  std::string line = "PROFILE:input\t" +
                     (random.Chance(80) ? random.PickWord("13|10|0|9|27|300") : RandomCode(random));
  for (int number = 0; number < 3; ++number) {
    line += "\t" + RandomNumber(random);
  }
  return line + (random.Chance(95) ? "\t" + RandomLength(random) : "");
}

TEST(UsualPaths, LeaveTheSamePerform) { RunPaths(6000, RandomPerformLine); }
TEST(UsualPaths, LeaveTheSameCall) { RunPaths(4000, RandomCallLine); }
TEST(UsualPaths, LeaveTheSameSharedObject) { RunPaths(3000, RandomObjectLine); }
TEST(UsualPaths, LeaveTheSameInput) { RunPaths(4000, RandomInputLine); }

std::string Counted(const std::string& text, bool keep) {
  ProfileTables tables;
  MemoryPlatform platform;
  platform.files["."]["run"] = {text};
  EXPECT_EQ(LoadProfile("run", platform, {.keep_performs = keep, .keep_inputs = keep}, tables),
            std::nullopt);
  std::string counts = "inputs: " + tables.InputCount.Text() + "\n";
  for (NameTable::Id command = 0; command < tables.Performs.Commands().size(); ++command) {
    counts.append(tables.Performs.Commands()[command]).append(": ");
    counts += std::to_string(tables.Performs.TimesOf(command)) + "\n";
  }
  return counts + "performs: " + std::to_string(tables.Performs.Count());
}

// Commands that are only counted have a quick way of their own; they are those of the PERFORMs that
// are kept.
TEST(UsualPaths, CountTheSameCommands) {
  RunCases(3000, [](RandomSource& random) {
    std::string text;
    for (std::size_t lines = random.Between(1, 80); lines > 0; --lines) {
      text += (random.Chance(80) ? RandomPerformLine(random) : RandomInputLine(random)) + "\n";
    }
    return Case{{text}, [](const Texts& texts) {
                  return FirstDifference(Counted(texts.front(), true),
                                         Counted(texts.front(), false));
                }};
  });
}

}  // namespace

}  // namespace ptick::model
