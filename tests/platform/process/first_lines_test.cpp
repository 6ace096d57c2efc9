#include "platform/linux/process/first_lines.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/linux_platform.h"
#include "platform/linux/unique_fd.h"
#include "support/environment.h"
#include "support/forked.h"
#include "support/temp_directory.h"

namespace ptick {
namespace {

using namespace std::chrono_literals;
using Words = std::vector<std::string>;
using testing::CheckForked;

// Long enough never to be reached, also on a machine that has much else to do.
constexpr CaptureLimits kUnlimited = {
    .time_per_command = 10min, .timeouts_in_a_row = 3, .at_once = 2};

Words Capture(const std::vector<Words>& commands, const CaptureLimits& limits = kUnlimited) {
  Words lines;
  CaptureOutputs(
      commands, [&lines](std::string_view line) { lines.emplace_back(line); }, limits);
  return lines;
}

// Whether every child of this process has been waited for.
bool HasNoChildren() { return ::waitpid(-1, nullptr, WNOHANG) == -1 && errno == ECHILD; }

// scripts_ in a directory that is on PATH, in front of the system's; `fifo` is there to wait on.
class CommandsTest : public ::testing::Test {
 protected:
  CommandsTest() {
    scripts_.MakeFifo("fifo");
    scripts_.MakeFifo("other");
  }
  std::string Fifo(const std::string& name = "fifo") const { return (scripts_ / name).native(); }

  const testing::TempDirectory scripts_;
  const testing::EnvironmentValue path_ =
      testing::EnvironmentValue("PATH", scripts_.Path().native() + ":/usr/bin:/bin");
};

TEST_F(CommandsTest, GivesTheFirstLineOfWhatACommandWrites) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"echo one; echo two", "one"},
      {"printf unended", "unended"},
      {"echo; echo two", ""},
      {":", ""},
      {"exit 3", ""},
      {"echo failed; exit 3", "failed"},
      {"echo error >&2; echo output", "error"},
      {"echo output; echo error >&2", "output"},
      {R"(printf 'a\r\nb\n')", "a\r"},
      {R"(printf 'a\000b\n')", std::string("a\0b", 3)},
      {R"(printf 'a\376b\n')",
       "a\xfe"
       "b"},
      {"cat; echo input ended", "input ended"},
      {"echo gone; kill -KILL $$", "gone"},
  };
  std::vector<Words> commands;
  Words want;
  for (const auto& [body, line] : rows) {
    const std::string name = "script" + std::to_string(commands.size());
    scripts_.WriteScript(name, body);
    commands.push_back({name});
    want.push_back(line);
  }
  EXPECT_EQ(Capture(commands), want);
  EXPECT_TRUE(HasNoChildren());
}

TEST_F(CommandsTest, ACommandIsStartedDirectly) {
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
  };
  for (const auto& [command, want] : rows) {
    EXPECT_EQ(Capture({command}), Words{want}) << (command.empty() ? "(none)" : command[0]);
  }
}

TEST_F(CommandsTest, AScriptThatNamesNoInterpreterIsNotRun) {
  scripts_.WriteScript("plain", "");
  scripts_.Write("plain", "echo shell\n");
  EXPECT_EQ(Capture({{"plain"}}), Words{""});
}

TEST_F(CommandsTest, OutputsOfAnySizeAreReadAndBounded) {
  const std::vector<std::pair<Words, std::string>> rows = {
      {{"seq", "1000000"}, "1"},                                          // about 7 megabytes
      {{"yes", "endless"}, "endless"},                                    // until it is stopped
      {{"head", "-c", "65535", "/dev/zero"}, std::string(65535, '\0')},   // as long as is kept
      {{"head", "-c", "900000", "/dev/zero"}, std::string(65536, '\0')},  // cut
  };
  for (const auto& [command, want] : rows) {
    EXPECT_TRUE(Capture({command})[0] == want) << command[0] << " " << command[1];
  }
}

TEST_F(CommandsTest, CallsInTheOrderGiven) {
  scripts_.WriteScript("waits", "cat " + Fifo());
  scripts_.WriteScript("frees", "echo freed > " + Fifo() + "; echo second");
  EXPECT_EQ(Capture({{"waits"}, {"frees"}, {"echo", "third"}}),
            (Words{"freed", "second", "third"}));
}

TEST_F(CommandsTest, NoMoreRunThanMayAtOnce) {
  scripts_.WriteScript("alone",
                       "mkdir " + Fifo("lock") + " && echo alone && rmdir " + Fifo("lock"));
  const std::vector<Words> commands(20, {"alone"});
  CaptureLimits limits = kUnlimited;
  limits.at_once = 1;
  EXPECT_EQ(Capture(commands, limits), Words(20, "alone"));
  EXPECT_GE(CountCores(), 1U);
}

TEST_F(CommandsTest, ManyCommandsAllAnswer) {
  std::vector<Words> commands;
  Words want;
  for (int i = 0; i < 300; ++i) {
    const bool exists = i % 3 != 0;
    commands.push_back({exists ? "echo" : "no_such_program", std::to_string(i)});
    want.push_back(exists ? std::to_string(i) : "");
  }
  EXPECT_EQ(Capture(commands), want);
  EXPECT_TRUE(Capture({}).empty());
  EXPECT_TRUE(HasNoChildren());
}

TEST_F(CommandsTest, ACommandThatDoesNotEndInTimeIsKilledWithItsGroup) {
  scripts_.WriteScript("hangs", "echo early; { read x < " + Fifo() + "; } & echo $! > " +
                                    Fifo("child") + "; read x < " + Fifo());
  EXPECT_EQ(CheckForked([this] {
              // What the command leaves behind becomes a child of this process.
              ASSERT_EQ(::prctl(PR_SET_CHILD_SUBREAPER, 1), 0);
              EXPECT_EQ(Capture({{"hangs"}}, {.time_per_command = 1s}), Words{""});
              const pid_t child = std::stoi(scripts_.Read("child"));
              EXPECT_EQ(testing::AwaitEnd(child), 128 + SIGKILL);
              EXPECT_TRUE(HasNoChildren());
            }),
            0);
}

TEST_F(CommandsTest, ACommandThatClosesItsOutputAndStaysIsKilled) {
  scripts_.WriteScript("closes", "echo early; exec >&- 2>&-; read x < " + Fifo());
  EXPECT_EQ(Capture({{"closes"}}, {.time_per_command = 100ms}), Words{""});
  EXPECT_TRUE(HasNoChildren());
}

TEST_F(CommandsTest, WhatACommandLeavesRunningIsNotWaitedFor) {
  scripts_.WriteScript("leaves", "{ read x < " + Fifo() + "; } & echo started");
  EXPECT_EQ(Capture({{"leaves"}}), Words{"started"});
  scripts_.Write("fifo", "\n");  // lets it end
}

TEST_F(CommandsTest, AfterSeveralTimeoutsInARowNothingIsRun) {
  scripts_.WriteScript("hangs", "read x < " + Fifo());
  scripts_.WriteScript("marks", "echo ran > " + Fifo("mark") + "; echo ran");
  const CaptureLimits limits = {.time_per_command = 20ms, .timeouts_in_a_row = 3, .at_once = 1};
  EXPECT_EQ(Capture({{"hangs"}, {"hangs"}, {"hangs"}, {"marks"}, {"echo"}}, limits), Words(5, ""));
  EXPECT_EQ(scripts_.Read("mark"), "");
  EXPECT_TRUE(HasNoChildren());
}

TEST_F(CommandsTest, AnAnswerBetweenTimeoutsStartsTheCountAnew) {
  scripts_.WriteScript("hangs", "read x < " + Fifo());
  // All at once: the last one has as long as those that hang.
  const CaptureLimits limits = {.time_per_command = 2s, .timeouts_in_a_row = 2, .at_once = 8};
  EXPECT_EQ(Capture({{"hangs"}, {"no_such_program"}, {"hangs"}, {"echo", "answer"}}, limits),
            (Words{"", "", "", "answer"}));
}

TEST_F(CommandsTest, CommandsAreKilledWhenTheCallerLeaves) {
  scripts_.WriteScript("hangs", "read x < " + Fifo());
  const std::vector<Words> commands = {{"echo"}, {"hangs"}};
  const auto leave = [](std::string_view) { throw std::string("left"); };
  EXPECT_THROW(CaptureOutputs(commands, leave, kUnlimited), std::string);
  EXPECT_TRUE(HasNoChildren());
}

TEST_F(CommandsTest, ASignalThatEndsTheProcessKillsTheCommands) {
  scripts_.WriteScript("hangs", "echo $$ > " + Fifo() + "; read x < " + Fifo("other"));
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    const pid_t process = testing::StartForked([] {
      Capture({{"hangs"}});
      return 0;
    });
    const pid_t command = std::stoi(scripts_.Read("fifo"));
    ::kill(process, signal);
    EXPECT_EQ(testing::AwaitEnd(process), 128 + signal);
    EXPECT_EQ(::kill(command, 0), -1) << "the command lives on";
    EXPECT_EQ(errno, ESRCH);
  }
}

TEST_F(CommandsTest, AnIgnoredSignalLeavesTheCommandsAlone) {
  scripts_.WriteScript("waits", "echo > " + Fifo() + "; cat " + Fifo("other"));
  const pid_t process = testing::StartForked([] {
    ::signal(SIGINT, SIG_IGN);
    return Capture({{"waits"}}) == Words{"still there"} ? 0 : 1;
  });
  EXPECT_EQ(scripts_.Read("fifo"), "\n");
  ::kill(process, SIGINT);
  scripts_.Write("other", "still there\n");
  EXPECT_EQ(testing::AwaitEnd(process), 0);
}

TEST_F(CommandsTest, CommandsGoOnWhileTheProcessIsStopped) {
  scripts_.WriteScript("waits", "echo > " + Fifo() + "; cat " + Fifo("other"));
  const pid_t process = testing::StartForked([] {
    ::setpgid(0, 0);  // in a group whose parent lives on in the session; no other can be stopped
    return Capture({{"waits"}}) == Words{"resumed"} ? 0 : 1;
  });
  EXPECT_EQ(scripts_.Read("fifo"), "\n");
  ::kill(process, SIGTSTP);
  int status = 0;
  ASSERT_EQ(::waitpid(process, &status, WUNTRACED), process);
  ASSERT_TRUE(WIFSTOPPED(status)) << status;
  scripts_.Write("other", "resumed\n");
  ::kill(process, SIGCONT);
  EXPECT_EQ(testing::AwaitEnd(process), 0);
}

TEST_F(CommandsTest, ThePlatformRunsThemWithTheUsualLimits) {
  LinuxPlatform platform(0, nullptr);
  Words lines;
  platform.CaptureFirstLines({{"echo", "one"}, {"no_such_program"}, {"echo", "three"}},
                             [&lines](std::string_view line) { lines.emplace_back(line); });
  EXPECT_EQ(lines, (Words{"one", "", "three"}));
}

}  // namespace
}  // namespace ptick
