#include "ptick/command_line.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "profile/ticks/sort_order.h"
#include "support/program_run.h"

namespace ptick {

namespace {

using testing::OptionsText;
using testing::ParseCommand;
using testing::ParsedCommand;
using testing::UsageText;

using Arguments = std::vector<std::string>;

TEST(CommandArguments, AreAllButTheName) {
  struct Row {
    Arguments command_line;
    Arguments want;
  };
  const std::vector<Row> rows = {
      {{}, {}},
      {{"ptick"}, {}},
      {{"ptick", "-a", "run1"}, {"-a", "run1"}},
      {{"ptick", ""}, {""}},
      {{"ptick", "a b", "", "c"}, {"a b", "", "c"}},
      // The command line is a list of fields, so a field mark separates arguments.
      {{"ptick",
        "a\xfe"
        "b"},
       {"a", "b"}},
      {{"ptick", "-a\xfe-p\xfe", "x"}, {"-a", "-p", "", "x"}},
      {{"ptick", "\xfe"}, {"", ""}},
      {{"ptick",
        "a\xfd"
        "b"},
       {"a\xfd"
        "b"}},
      {{"pt\xfeick", "a"}, {"a"}},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(CommandArguments(row.command_line), row.want);
  }
}

struct Row {
  Arguments given;
  std::string_view want;
};

void ExpectOptions(const std::vector<Row>& rows) {
  for (const Row& row : rows) {
    MemoryPlatform platform;
    const ParsedCommand parsed = ParseCommand(row.given, platform);
    const std::string shown = ::testing::PrintToString(row.given);
    EXPECT_EQ(OptionsText(parsed.options), row.want) << shown;
    EXPECT_EQ(parsed.stopped, std::nullopt) << shown;
    EXPECT_EQ(platform.on_terminal + platform.printed, "") << shown;
    EXPECT_TRUE(platform.opened_files.empty()) << shown;
  }
}

TEST(CommandLine, HasDefaults) {
  MemoryPlatform platform;
  const ParsedCommand parsed = ParseCommand({}, platform);
  EXPECT_EQ(OptionsText(parsed.options), "");
  EXPECT_EQ(parsed.options.TickOrder, SortOrder::kDescending);
}

TEST(CommandLine, SetsAFlagPerLetter) {
  for (const char letter : std::string_view("nuiapvtosAj")) {
    ExpectOptions({{{std::string("-") + letter}, std::string(1, letter)}});
  }
}

TEST(CommandLine, CombinesLettersAndArguments) {
  ExpectOptions({
      {{"-ap"}, "ap"},
      {{"-a", "-p"}, "ap"},
      {{"-pa"}, "ap"},
      {{"-nuiapvtosAj"}, "nuiapvtosAj"},
      {{"-aaa", "-a"}, "a"},
      {{"-"}, ""},
      {{"-", "-", "-v"}, "v"},
      {{"-n", "run1", "-u", "run2"}, "nu profiles=run1,run2"},
  });
}

TEST(CommandLine, CollectsProfileNames) {
  ExpectOptions({
      {{"run1"}, " profiles=run1"},
      {{"run1", "run1", "a/b/c"}, " profiles=run1,run1,a/b/c"},
      {{""}, " profiles="},
      {{"", "x"}, " profiles=,x"},
      {{" -a", "a-b", "+n"}, " profiles= -a,a-b,+n"},
      {{"ON", "5", "-j"}, "j profiles=ON,5"},
      {{"5"}, " profiles=5"},
  });
}

TEST(CommandLine, TakesTheNameOfTheKeyScript) {
  ExpectOptions({
      {{"-kout"}, " k=out"},
      {{"-k", "out"}, " k=out"},
      {{"-k", "out", "run1"}, " k=out profiles=run1"},
      {{"-ankout"}, "na k=out"},
      {{"-ank", "out"}, "na k=out"},
      {{"-kv"}, " k=v"},
      {{"-kav", "-t"}, "t k=av"},
      {{"-kx", "-v"}, "v k=x"},
      {{"-k", "-v"}, " k=-v"},
      {{"-k", "-", "run1"}, " k=- profiles=run1"},
      {{"-k", "-x"}, " k=-x"},
      {{"-k a"}, " k= a"},
      {{"-k-"}, " k=-"},
      // The last name counts, an empty one, too.
      {{"-k", "a", "-kb"}, " k=b"},
      {{"-k"}, ""},
      {{"-nk"}, "n"},
      {{"-ka", "-k"}, ""},
      {{"-k", "", "run1"}, " profiles=run1"},
  });
}

TEST(CommandLine, StopsAtALetterItDoesNotKnow) {
  for (int byte = 1; byte < 256; ++byte) {
    const char letter = static_cast<char>(byte);
    if (std::string_view("nuiapvtosAjhfFk").find(letter) != std::string_view::npos) {
      continue;
    }
    MemoryPlatform platform;
    const ParsedCommand parsed = ParseCommand({std::string("-") + letter}, platform);
    EXPECT_EQ(parsed.stopped, 1) << byte;
    EXPECT_EQ(platform.on_terminal, "Invalid argument\n" + std::string(UsageText())) << byte;
    EXPECT_EQ(platform.printed, "");
  }
}

TEST(CommandLine, StopsWhereItStands) {
  struct StopRow {
    Arguments given;
    int want;
  };
  const std::vector<StopRow> rows = {
      {{"-h"}, 0},       {{"-hx"}, 0},          {{"-ah"}, 0},
      {{"-h", "-x"}, 0}, {{"run1", "-h"}, 0},   {{"-h", "-fnone"}, 0},
      {{"-hfnone"}, 0},  {{"-h", "-Fnone"}, 0}, {{"-x"}, 1},
      {{"-ax"}, 1},      {{"-xh"}, 1},          {{"-x", "-h"}, 1},
      {{"-xfnone"}, 1},  {{"-x", "-fnone"}, 1}, {{"--"}, 1},
      {{"--help"}, 1},   {{"-j", "-x"}, 1},     {{"-j", "ON", "5", "-h"}, 0},
  };
  for (const StopRow& row : rows) {
    MemoryPlatform platform;
    const ParsedCommand parsed = ParseCommand(row.given, platform);
    const std::string shown = ::testing::PrintToString(row.given);
    EXPECT_EQ(parsed.stopped, row.want) << shown;
    EXPECT_EQ(platform.on_terminal,
              (row.want == 1 ? "Invalid argument\n" : "") + std::string(UsageText()))
        << shown;
    EXPECT_TRUE(platform.opened_files.empty()) << shown;
  }
}

TEST(CommandLine, TakesTheWidthOfThePage) {
  for (const std::int64_t width : {1, 80, 132, 32767}) {
    MemoryPlatform platform;
    platform.width = width;
    const ParsedCommand parsed = ParseCommand({}, platform);
    EXPECT_EQ(parsed.options.ReportWidth, width - 1);
  }
}

}  // namespace

}  // namespace ptick
