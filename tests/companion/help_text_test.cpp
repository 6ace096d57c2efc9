#include "companion/help_text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "companion/command_line.h"
#include "companion/support/typed_options.h"

namespace ptick::companion {

namespace {

using testing::Describe;
using testing::Parsed;
using Texts = std::vector<std::string>;

TEST(HelpText, IsMadeOfTheListOfOptions) {
  Parsed parsed;
  CommandLine line("ptick-diff");
  Describe(line, parsed);
  Texts options;
  for (const OptionInfo& option : line.Options()) {
    options.push_back(OptionName(option) + (option.short_name == 0 ? "" : " ") +
                      (option.short_name == 0 ? "" : std::string(1, option.short_name)) +
                      (option.value_name.empty() ? "" : "=" + option.value_name) +
                      (option.choices.empty() ? "" : "(" + option.choices.back() + ")"));
  }
  EXPECT_EQ(options,
            (Texts{"--all a", "--title t=TEXT", "-f f=DIR", "--context=N", "--by=WHAT(program)",
                   "--fail-slower=PERCENT", "--vs", "--output o=FILE", "--quiet q",
                   "--color=WHEN(never)", "--help h", "--version V"}));
}

TEST(HelpText, ShowsUsageOptionsAndNotes) {
  Parsed parsed;
  CommandLine line("ptick-diff");
  Describe(line, parsed);
  line.Note(
      "Exit status: 0 done, 1 done with something to tell, 2 trouble, and this is a "
      "paragraph of more than one line.");
  EXPECT_EQ(line.Help(), R"(Usage: ptick-diff [OPTION]... OLD NEW
  or:  ptick-diff [OPTION]... OLD... --vs NEW...

Says what became slower.

Options:
  -a, --all                 show all
  -t, --title=TEXT          a title
  -f DIR                    a folder
      --context=N           lines around
      --by=WHAT             what a row is
      --fail-slower=PERCENT
                            fail
      --vs                  divide
  -o, --output=FILE         write the result to FILE, whole or not at all; '-'
                            is standard output
  -q, --quiet               show no progress
      --color=WHEN          use colour: auto (on a terminal), always or never
  -h, --help                show this help and end
  -V, --version             show the version and end

Exit status: 0 done, 1 done with something to tell, 2 trouble, and this is a
paragraph of more than one line.
)");
}

}  // namespace

}  // namespace ptick::companion
