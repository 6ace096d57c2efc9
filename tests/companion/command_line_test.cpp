#include "companion/command_line.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "companion/support/typed_options.h"

namespace ptick::companion {

namespace {

using testing::Check;
using Texts = std::vector<std::string>;

TEST(CommandLine, TakesOptionsAnywhere) {
  Check({
      {{"a"}, "| <a>"},
      {{"-a", "x"}, "all | <x>"},
      {{"x", "-a"}, "all | <x>"},
      {{"x", "-a", "y", "-q", "z"}, "all quiet | <x> <y> <z>"},
      {{"--all", "--quiet", "x"}, "all quiet | <x>"},
      {{"-aq", "x"}, "all quiet | <x>"},
      {{"-a", "-a", "x"}, "all | <x>"},
  });
}

TEST(CommandLine, TakesValuesInAllForms) {
  Check({
      {{"-t", "T", "x"}, "title=T | <x>"},
      {{"-tT", "x"}, "title=T | <x>"},
      {{"-aqtT", "x"}, "all title=T quiet | <x>"},
      {{"-aqt", "T", "x"}, "all title=T quiet | <x>"},
      {{"--title", "T", "x"}, "title=T | <x>"},
      {{"--title=T", "x"}, "title=T | <x>"},
      {{"--title=a=b", "x"}, "title=a=b | <x>"},
      {{"-t=T", "x"}, "title==T | <x>"},
      // Empty, and such as look like something else.
      {{"--title=", "x"}, "title= | <x>"},
      {{"--title", "", "x"}, "title= | <x>"},
      {{"-t", "", "x"}, "title= | <x>"},
      {{"-t", "-a", "x"}, "title=-a | <x>"},
      {{"-t", "--", "x"}, "title=-- | <x>"},
      {{"-t", "--all=", "x"}, "title=--all= | <x>"},
      {{"-t", "-a-b-", "x"}, "title=-a-b- | <x>"},
      {{"-ta-b", "x"}, "title=a-b | <x>"},
      {{"--title=--title=", "x"}, "title=--title= | <x>"},
      {{"--title", "--vs", "x"}, "title=--vs | <x>"},
      {{"--title=[a,b]", "x"}, "title=[a,b] | <x>"},
      {{"--title={}", "x"}, "title={} | <x>"},
      {{"--title=%%", "x"}, "title=%% | <x>"},
      {{"--title=\"q\" 'r'", "x"}, "title=\"q\" 'r' | <x>"},
      {{"--title=caf\xE9\n", "x"}, "title=caf\xE9\n | <x>"},
      {{"-o", "-", "x"}, "output=- | <x>"},
      {{"-o-", "x"}, "output=- | <x>"},
  });
}

TEST(CommandLine, TakesTheLastOrAllOfSeveralValues) {
  Check({
      {{"-t", "1", "--title=2", "x"}, "title=2 | <x>"},
      {{"--by=program", "--by=line", "x"}, "| <x>"},
      {{"-f", "d1", "x", "-fd2", "-f", "d1"}, "f=d1 f=d2 f=d1 | <x>"},
      {{"-f", "d1", "x"}, "f=d1 | <x>"},
  });
}

TEST(CommandLine, TakesOperandsOfAllKinds) {
  Check({
      {{"-"}, "| <->"},
      {{"-", "-a", "-"}, "all | <-> <->"},
      {{""}, "| <>"},
      {{"a=b"}, "| <a=b>"},
      {{"[a,b]", "{}", "%%"}, "| <[a,b]> <{}> <%%>"},
      {{"/x", "++", "a-b"}, "| </x> <++> <a-b>"},
      {{"--", "-a"}, "| <-a>"},
      {{"x", "--", "--all", "--"}, "| <x> <--all> <-->"},
      {{"--", "--"}, "| <-->"},
      {{"--", "--vs"}, "| <--vs>"},
      {{"--", "--help"}, "| <--help>"},
      {{"-a", "--", "-"}, "all | <->"},
  });
}

TEST(CommandLine, DividesOperands) {
  Check({
      {{"a", "b", "--vs", "c"}, "| <a> <b> --vs <c>"},
      {{"a", "--vs", "-a", "b", "--", "-c"}, "all | <a> --vs <b> <-c>"},
      {{"--vs", "c"}, "| --vs <c>"},
      {{"a", "--vs"}, "| <a> --vs"},
      {{"a", "--vs", "b", "--vs"}, "wrong: option '--vs' is given twice"},
      {{"a", "--vs=b"}, "wrong: option '--vs' takes no value"},
  });
}

TEST(CommandLine, ParsesWords) {
  Check({
      {{"--context=0", "x"}, "context=0 | <x>"},
      {{"--context=100", "x"}, "context=100 | <x>"},
      {{"--context=007", "x"}, "context=7 | <x>"},
      {{"--by", "program", "x"}, "by=program | <x>"},
      {{"--fail-slower", "5", "x"}, "percent | <x>"},
      {{"--color=always", "x"}, "always | <x>"},
      {{"--color=always", "--color=never", "x"}, "never | <x>"},
      {{"--color", "auto", "x"}, "| <x>"},
  });
}

TEST(CommandLine, HelpsWhateverElseIsThere) {
  Check({
      {{"--help"}, "help"},
      {{"-h"}, "help"},
      {{"--version"}, "version"},
      {{"-V"}, "version"},
      {{"--version", "--help"}, "help"},
      {{"a", "b", "c", "d", "--help"}, "help"},
      {{"--bogus", "--help"}, "help"},
  });
}

TEST(CommandLine, ChecksAtTheEnd) {
  bool json = false;
  bool csv = false;
  const auto parse = [&](const Texts& arguments) {
    CommandLine line("p");
    line.Flag("--json", "", json).Flag("--csv", "", csv).Check([&] {
      if (json && csv) {
        throw UsageError("--json and --csv exclude each other");
      }
    });
    return line.Parse(arguments);
  };
  EXPECT_EQ(parse({"--json"}), CommandLine::Wish::kRun);
  EXPECT_THROW(parse({"--csv", "--json"}), UsageError);
  EXPECT_EQ(parse({"--csv", "--json", "--help"}), CommandLine::Wish::kHelp);
}

}  // namespace

}  // namespace ptick::companion
