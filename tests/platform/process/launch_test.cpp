#include "platform/linux/process/launch.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/process/first_lines.h"
#include "support/environment.h"
#include "support/forked.h"
#include "support/temp_directory.h"

namespace ptick {

namespace {

using namespace std::chrono_literals;
using Words = std::vector<std::string>;
using testing::CheckForked;

// The first line of what a command writes, empty when it cannot be started; that is no lack.
std::string OutputOf(const Words& command) {
  const FirstLines got = CaptureFirstLines({command}, {.time_to_first_line = 10min});
  EXPECT_EQ(got.error, 0);
  return got.lines[0];
}

// scripts_ in a directory that is on PATH, before the system's.
class LaunchTest : public ::testing::Test {
 protected:
  const testing::TempDirectory scripts_;
  const testing::EnvironmentValue path_ =
      testing::EnvironmentValue("PATH", scripts_.Path().native() + ":/usr/bin:/bin");
};

TEST_F(LaunchTest, ACommandIsStartedDirectly) {
  scripts_.WriteScript("words", "printf '%s|' \"$@\"");
  const std::vector<std::pair<Words, std::string>> rows = {
      {{"words", "a b", "", "$HOME", "*", ";exit", "`id`"}, "a b||$HOME|*|;exit|`id`|"},
      {{scripts_ / "words", "x"}, "x|"},
      {{"words;", "x"}, ""},
      {{"no_such_program"}, ""},
      {{"/no/such/program"}, ""},
      {{scripts_.Path()}, ""},
      {{""}, ""},
      {{}, ""},
      {{"words", std::string("a\0b", 3)}, ""},
      {{std::string("wor\0ds", 6)}, ""},
      {{"words", std::string(3'000'000, 'x')}, ""},  // longer than an argument may be
      {{std::string(5000, 'x')}, ""},
  };
  for (const auto& [command, want] : rows) {
    EXPECT_EQ(OutputOf(command), want) << (command.empty() ? "(none)" : command[0]);
  }
}

TEST_F(LaunchTest, AScriptThatNamesNoInterpreterIsNotRun) {
  scripts_.WriteScript("plain", "");
  scripts_.Write("plain", "echo shell\n");
  EXPECT_EQ(OutputOf({"plain"}), "");
}

TEST_F(LaunchTest, ACommandIsLookedForOnPath) {
  const testing::TempDirectory first;
  const testing::TempDirectory second;
  first.Write("only_readable", "");
  for (const std::string name : {"only_readable", "in_second"}) {
    second.WriteScript(name, "echo second");
  }
  first.WriteScript("in_both", "echo first");
  second.WriteScript("in_both", "echo second");
  const std::string both = first.Path().native() + ":" + second.Path().native();
  struct Row {
    std::optional<std::string> path;
    std::string command;
    std::string want;
  };
  const std::vector<Row> rows = {
      {both, "in_both", "first"},
      {both, "in_second", "second"},
      {both, "only_readable", "second"},
      {both, "nowhere", ""},
      {"/no/such/folder:" + both, "in_both", "first"},
      {(first / "only_readable").native() + ":" + both, "in_both", "first"},
      {"/" + std::string(5000, 'x') + ":" + both, "in_both", "first"},
      {first.Path().native(), "only_readable", ""},
      {"", "in_both", ""},
      {std::nullopt, "uname", "Linux"},
  };
  for (const Row& row : rows) {
    const testing::EnvironmentValue path("PATH", row.path);
    EXPECT_EQ(OutputOf({row.command}), row.want)
        << row.path.value_or("(none)") << " " << row.command;
  }
  // Nothing between two colons is the current directory.
  EXPECT_EQ(
      CheckForked([&first, &both] {
        ASSERT_EQ(::chdir(first.Path().c_str()), 0);
        for (const std::string path : {":/usr/bin:/bin", "/usr/bin::/bin", "/usr/bin:/bin:"}) {
          const testing::EnvironmentValue current("PATH", path);
          EXPECT_EQ(OutputOf({"in_both"}), "first") << path;
        }
        const testing::EnvironmentValue absolute("PATH", both);
        EXPECT_EQ(OutputOf({"./in_second"}), "");
      }),
      0);
}

TEST_F(LaunchTest, TellsWhyAProgramCannotBeStarted) {
  scripts_.Write("only_readable", "");
  const std::vector<std::pair<std::string, int>> rows = {
      {"no_such_program", ENOENT},
      {"/no/such/program", ENOENT},
      {"", ENOENT},
      {"only_readable", EACCES},
      {scripts_.Path(), EACCES},
      {std::string("echo\0", 5), EINVAL},
      {(scripts_ / "only_readable" / "below").native(), ENOTDIR},
  };
  std::array<int, 2> lifeline = {};
  ASSERT_EQ(::pipe(lifeline.data()), 0);
  for (const auto& [program, want] : rows) {
    const Launched launched = Launch(program, {program}, {.input = STDIN_FILENO}, lifeline[0]);
    EXPECT_EQ(launched.error, want) << program;
    EXPECT_EQ(launched.child, 0) << program;
  }
  ::close(lifeline[0]);
  ::close(lifeline[1]);
}

}  // namespace

}  // namespace ptick
