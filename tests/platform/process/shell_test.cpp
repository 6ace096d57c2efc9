#include "platform/linux/process/shell.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <functional>
#include <string>
#include <vector>

#include "platform/linux/process/process_start.h"
#include "platform/linux/unique_fd.h"
#include "support/environment.h"
#include "support/forked.h"
#include "support/temp_directory.h"

namespace ptick {

namespace {

namespace fs = std::filesystem;
using testing::EnvironmentValue;
using testing::TempDirectory;

const std::string kSystemPath = "/usr/bin:/bin";

std::string Quote(const fs::path& path) { return "'" + path.native() + "'"; }

// Runs `body` with standard error in the file `messages`.
int RunWithMessages(const TempDirectory& directory, const std::function<int()>& body) {
  {
    const UniqueFd messages(
        ::open((directory / "messages").c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
    ::dup2(messages.Get(), STDERR_FILENO);
  }
  return body();
}

// Runs a line in a process of its own, its standard error in the file `messages`.
int RunLine(const std::string& line, std::string_view input, const TempDirectory& directory) {
  return testing::RunForked([&] {
    PrepareProcess();
    return RunWithMessages(directory, [&] { return RunShellLine(line, input); });
  });
}

TEST(ShellTest, GivesTheExitStatus) {
  const TempDirectory directory;
  const std::vector<std::pair<std::string, int>> rows = {
      {"", 0},
      {"true", 0},
      {"exit 3", 3},
      {"exit 255", 255},
      {"kill -KILL $$", 128 + SIGKILL},
      {"/no/such/program", 127},
      {"true\nexit 4", 4},
      {"read first; read second; [ \"$first,$second\" = one,two ]", 0},
  };
  for (const auto& [line, want] : rows) {
    EXPECT_EQ(RunLine(line, "one\ntwo\n", directory), want) << line;
  }
}

TEST(ShellTest, SaysThatItHasTooFewDescriptors) {
  const TempDirectory directory;
  const std::string line = "dcopy > " + Quote(directory / "keys.txt");
  for (const rlim_t limit : {4U, 5U, 8U, 10U, 11U, 12U, 15U, 16U, 17U, 64U}) {
    const int status = testing::RunForked([&] {
      PrepareProcess();
      ::close_range(STDERR_FILENO + 1, ~0U, 0);
      return RunWithMessages(directory, [&] {
        const rlimit few = {.rlim_cur = limit, .rlim_max = limit};
        ::setrlimit(RLIMIT_NOFILE, &few);
        return RunShellLine(line, "input");
      });
    });
    const bool enough = limit >= 16;
    EXPECT_EQ(status, enough ? 0 : 127) << limit;
    EXPECT_EQ(directory.Read("messages"),
              enough ? "" : "ptick: cannot run the shell: Too many open files\n");
    EXPECT_EQ(directory.Read("keys.txt"), enough ? "input" : "") << limit;
  }
}

TEST(ShellTest, SaysWhyItCouldNotBeStarted) {
  const TempDirectory directory;
  const int status = testing::RunForked([&] {
    PrepareProcess();
    return RunWithMessages(directory, [] {
      std::vector<UniqueFd> all;
      do {
        all.emplace_back(::dup(STDIN_FILENO));
      } while (all.back().IsOpen());
      return RunShellLine("true", "input");
    });
  });
  EXPECT_EQ(status, 127);
  EXPECT_EQ(directory.Read("messages"), "ptick: cannot run the shell: Too many open files\n");
}

TEST(ShellTest, ALineWithAZeroByteIsNotRun) {
  const TempDirectory directory;
  const std::string line = ": > " + Quote(directory / "ran") + std::string("\0", 1);
  EXPECT_EQ(RunLine(line, "", directory), 127);
  EXPECT_FALSE(fs::exists(directory / "ran"));
}

TEST(ShellTest, InputsOfAnySizeReachTheCommand) {
  const TempDirectory directory;
  for (const std::size_t size : {0U, 1U, 65536U, 65537U, 3000000U}) {
    std::string input(size, '\0');
    for (std::size_t i = 0; i < size; ++i) {
      input[i] = static_cast<char>(i * 7 % 251);
    }
    EXPECT_EQ(RunLine("cat > " + Quote(directory / "copy"), input, directory), 0);
    EXPECT_TRUE(directory.Read("copy") == input) << size;
  }
}

TEST(ShellTest, AnInputThatIsNotReadDoesNoHarm) {
  const TempDirectory directory;
  const std::string input(1000000, 'x');
  const std::vector<std::pair<std::string, int>> rows = {{"exit 3", 3},
                                                         {"exec <&-; exit 4", 4},
                                                         {"head -c 100000 > /dev/null; exit 5", 5},
                                                         {"kill -KILL $$", 128 + SIGKILL}};
  for (const auto& [line, want] : rows) {
    EXPECT_EQ(RunLine(line, input, directory), want) << line;
  }
}

// It is in the background, where a terminal would stop it.
TEST(ShellTest, TheTerminalDoesNotStopIt) {
  const TempDirectory directory;
  EXPECT_EQ(RunLine("kill -TTOU $$; kill -TTIN $$; exit 7", "", directory), 7);
}

TEST(ShellTest, DcopyCopiesTheInputWhereThePlatformIsNotInstalled) {
  const EnvironmentValue path("PATH", kSystemPath);
  const TempDirectory directory;
  directory.Write("keys.txt", "earlier content that is longer");
  EXPECT_EQ(RunLine("dcopy > " + Quote(directory / "keys.txt"), "*\nINPUT\n", directory), 0);
  EXPECT_EQ(directory.Read("keys.txt"), "*\nINPUT\n");
  EXPECT_EQ(RunLine("dcopy > " + Quote(directory / "two\nlines"), "*\n", directory), 0);
  EXPECT_EQ(directory.Read("two\nlines"), "*\n");
  EXPECT_EQ(directory.Read("messages"), "");
}

TEST(ShellTest, DcopyIsThePlatformsWhereItIsInstalled) {
  const TempDirectory directory;
  directory.WriteScript("dcopy", "echo its own; exit 9");
  const EnvironmentValue path("PATH", directory.Path().native() + ":" + kSystemPath);
  EXPECT_EQ(RunLine("dcopy > " + Quote(directory / "keys.txt"), "*\n", directory), 9);
  EXPECT_EQ(directory.Read("keys.txt"), "its own\n");
}

TEST(ShellTest, WhatTheShellSaysGoesToStandardError) {
  const EnvironmentValue path("PATH", kSystemPath);
  const TempDirectory directory;
  EXPECT_NE(RunLine("dcopy > " + Quote(directory / "no/file"), "*\n", directory), 0);
  EXPECT_TRUE(directory.Read("messages").starts_with("sh: 1: ")) << directory.Read("messages");
  EXPECT_NE(RunLine("dcopy > " + Quote(directory.Path()), std::string(1000000, 'x'), directory), 0);
  EXPECT_NE(directory.Read("messages"), "");
}

TEST(ShellTest, DcopyFailsWithoutAnyProgram) {
  const TempDirectory directory;
  const EnvironmentValue path("PATH", directory.Path());
  EXPECT_EQ(RunLine("dcopy > " + Quote(directory / "keys.txt"), "*\n", directory), 127);
}

}  // namespace

}  // namespace ptick
