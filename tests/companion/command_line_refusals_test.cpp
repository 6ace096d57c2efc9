// What a command line refuses, and in which words.

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "companion/command_line.h"
#include "companion/support/typed_options.h"

namespace ptick::companion {

namespace {

using testing::Check;
using Texts = std::vector<std::string>;

TEST(CommandLine, RefusesWrongValues) {
  const std::string whole = " is not a whole number from 0 to 100";
  Check({
      {{"--context=101", "x"}, "wrong: option '--context': '101'" + whole},
      {{"--context=-1", "x"}, "wrong: option '--context': '-1'" + whole},
      {{"--context=+1", "x"}, "wrong: option '--context': '+1'" + whole},
      {{"--context=1.5", "x"}, "wrong: option '--context': '1.5'" + whole},
      {{"--context= 1", "x"}, "wrong: option '--context': ' 1'" + whole},
      {{"--context=", "x"}, "wrong: option '--context': ''" + whole},
      {{"--context=99999999999999999999", "x"},
       "wrong: option '--context': '99999999999999999999'" + whole},
      {{"--by=lines", "x"}, "wrong: option '--by': 'lines' is not line or program"},
      {{"--by=", "x"}, "wrong: option '--by': '' is not line or program"},
      {{"--color=yes", "x"}, "wrong: option '--color': 'yes' is not auto, always or never"},
      {{"--fail-slower=6", "x"}, "wrong: option '--fail-slower': '6' is not a percentage"},
      // A wrong value is wrong even if another one follows.
      {{"--by=x", "--by=line", "x"}, "wrong: option '--by': 'x' is not line or program"},
  });
}

TEST(CommandLine, RefusesWhatIsNoOption) {
  Check({
      {{"--bogus", "x"}, "wrong: unknown option '--bogus'"},
      {{"--bogus=1", "x"}, "wrong: unknown option '--bogus'"},
      {{"-x"}, "wrong: unknown option '-x'"},
      {{"-ax"}, "wrong: unknown option '-x'"},
      {{"-5"}, "wrong: unknown option '-5'"},
      {{"-a5"}, "wrong: unknown option '-5'"},
      {{"---"}, "wrong: unknown option '---'"},
      {{"--=x"}, "wrong: unknown option '--=x'"},
      {{"-="}, "wrong: unknown option '-='"},
      {{"-a-"}, "wrong: unknown option '--'"},
      {{"-a-all"}, "wrong: unknown option '--all'"},
      {{"-a-vs"}, "wrong: unknown option '--vs'"},
      {{"- "}, "wrong: unknown option '- '"},
      {{"-!"}, "wrong: unknown option '-!'"},
      {{"--!x"}, "wrong: unknown option '--!x'"},
      {{"-\n"}, "wrong: unknown option '-\n'"},
      {{"-all"}, "wrong: unknown option '-ll'"},
      {{"--All"}, "wrong: unknown option '--All'"},
      {{"--fail_slower=5"}, "wrong: unknown option '--fail_slower'"},
  });
}

TEST(CommandLine, WantsLongNamesInFull) {
  Check({
      {{"--titl=x"}, "wrong: unknown option '--titl' (did you mean '--title'?)"},
      {{"--co", "1"}, "wrong: unknown option '--co' (did you mean '--context' or '--color'?)"},
      {{"--v"}, "wrong: unknown option '--v' (did you mean '--vs' or '--version'?)"},
      {{"--titles"}, "wrong: unknown option '--titles'"},
      {{"-titl", "x"}, "title=itl | <x>"},
  });
}

TEST(CommandLine, RefusesMissingAndSuperfluousValues) {
  Check({
      {{"x", "-t"}, "wrong: option '--title' needs a value"},
      {{"x", "--title"}, "wrong: option '--title' needs a value"},
      {{"x", "-at"}, "wrong: option '--title' needs a value"},
      {{"x", "-f"}, "wrong: option '-f' needs a value"},
      {{"x", "--output"}, "wrong: option '--output' needs a value"},
      {{"x", "--all=yes"}, "wrong: option '--all' takes no value"},
      {{"x", "--all=true"}, "wrong: option '--all' takes no value"},
      {{"x", "--all=false"}, "wrong: option '--all' takes no value"},
      {{"x", "--all={}"}, "wrong: option '--all' takes no value"},
      {{"x", "--all="}, "wrong: option '--all' takes no value"},
      {{"x", "--help=all"}, "wrong: option '--help' takes no value"},
  });
}

TEST(CommandLine, CountsOperands) {
  Check({
      {{}, "wrong: missing operand"},
      {{"-a"}, "wrong: missing operand"},
      {{"a", "b", "c", "d", "e"}, "wrong: extra operand 'd'"},
  });
  Texts two;
  CommandLine line("p");
  line.Operands(two, 2, 2);
  EXPECT_THROW(line.Parse({"only"}), UsageError);
  CommandLine none("p");
  EXPECT_THROW(none.Parse({"x"}), UsageError);
  CommandLine nothing("p");
  EXPECT_EQ(nothing.Parse({}), CommandLine::Wish::kRun);
}

TEST(WholeNumber, SaysItsBounds) {
  const auto reason = [](Bounds bounds) {
    try {
      ParseWholeNumber("x", bounds);
      return std::string("a number");
    } catch (const UsageError& error) {
      return std::string(error.what());
    }
  };
  EXPECT_EQ(reason({}), "a whole number");
  EXPECT_EQ(reason({.least = 1}), "a whole number of 1 or more");
  EXPECT_EQ(reason({.least = 0, .most = 9}), "a whole number from 0 to 9");
  EXPECT_EQ(ParseWholeNumber("18446744073709551615"), UINT64_MAX);
  EXPECT_THROW(ParseWholeNumber("18446744073709551616"), UsageError);
}

}  // namespace

}  // namespace ptick::companion
