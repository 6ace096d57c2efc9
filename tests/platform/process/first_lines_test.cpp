#include "platform/linux/process/first_lines.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/linux_platform.h"
#include "support/environment.h"
#include "support/forked.h"
#include "support/temp_directory.h"

namespace ptick {

namespace {

using namespace std::chrono_literals;
using Words = std::vector<std::string>;
using testing::CheckForked;

// Long enough never to be reached, also on a machine that has much else to do.
constexpr CaptureLimits kUnlimited = {.time_to_first_line = 10min, .at_once = 2};

Words Capture(const std::vector<Words>& commands, const CaptureLimits& limits = kUnlimited) {
  const FirstLines got = CaptureFirstLines(commands, limits);
  EXPECT_EQ(got.error, 0);
  return got.lines;
}

// With more and more time, until it suffices for `want`: how much commands that hang must be given
// before they do depends on what else the machine does.
Words CaptureInTime(const std::vector<Words>& commands, const Words& want) {
  Words lines;
  for (std::chrono::milliseconds limit = 20ms; lines != want && limit < 1min; limit *= 2) {
    lines = Capture(commands, {.time_to_first_line = limit, .at_once = 1});
  }
  return lines;
}

// Whether every child of this process has been waited for.
bool HasNoChildren() { return ::waitpid(-1, nullptr, WNOHANG) == -1 && errno == ECHILD; }

// scripts_ in a directory that is on PATH, before the system's; `fifo` and `other` are there to
// wait on.
class FirstLinesTest : public ::testing::Test {
 protected:
  FirstLinesTest() {
    scripts_.MakeFifo("fifo");
    scripts_.MakeFifo("other");
  }
  std::string Fifo(const std::string& name = "fifo") const { return (scripts_ / name).native(); }

  // The command that runs a script of this body.
  Words Script(const std::string& body) {
    const std::string name = "script" + std::to_string(++script_count_);
    scripts_.WriteScript(name, body);
    return {name};
  }
  Words Hanging() { return Script("read x < " + Fifo()); }

  const testing::TempDirectory scripts_;
  const testing::EnvironmentValue path_ =
      testing::EnvironmentValue("PATH", scripts_.Path().native() + ":/usr/bin:/bin");
  int script_count_ = 0;
};

struct Row {
  std::string body;
  std::string want;
};

TEST_F(FirstLinesTest, TheFirstLineOfWhatACommandWrites) {
  const std::vector<Row> rows = {
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
      {R"(printf 'a\376b\n')", "a"},
      {R"(printf '\376b\n')", ""},
      {R"(printf 'a\375b\376')",
       "a\xfd"
       "b"},
      {"cat; echo input ended", "input ended"},
      {"echo gone; kill -KILL $$", "gone"},
  };
  std::vector<Words> commands;
  Words want;
  for (const Row& row : rows) {
    commands.push_back(Script(row.body));
    want.push_back(row.want);
  }
  EXPECT_EQ(Capture(commands), want);
  EXPECT_TRUE(HasNoChildren());
}

TEST_F(FirstLinesTest, ALineCountsAsSoonAsItIsOver) {
  const std::vector<Row> rows = {
      {"echo first; ", "first"},
      {"echo error >&2; ", "error"},
      {"printf 'field\\376'; ", "field"},
      {"printf 'in '; printf 'parts\\n'; ", "in parts"},
      {"head -c 65536 /dev/zero; ", std::string(65536, '\0')},  // as long as is kept
      {"printf early; exec >&- 2>&-; ", "early"},               // no more can come
      {"exec >&- 2>&-; ", ""},
  };
  for (const Row& row : rows) {
    const Words hanging = Script(row.body + "read x < " + Fifo());
    EXPECT_TRUE(Capture({hanging}) == Words{row.want}) << row.body;
    EXPECT_TRUE(HasNoChildren()) << row.body;
  }
}

TEST_F(FirstLinesTest, WhatIsWrittenInTimeCounts) {
  const Words unended = Script("printf early; read x < " + Fifo());
  EXPECT_EQ(CaptureInTime({unended}, {"early"}), Words{"early"});
  EXPECT_TRUE(HasNoChildren());
}

TEST_F(FirstLinesTest, ACommandMayTakeTenSeconds) {
  EXPECT_EQ(CaptureLimits().time_to_first_line, 10s);
}

TEST_F(FirstLinesTest, OutputsOfAnySizeAreReadAndBounded) {
  const std::vector<std::pair<Words, std::string>> rows = {
      {{"seq", "1000000"}, "1"},                                          // about 7 megabytes
      {{"yes", "endless"}, "endless"},                                    // until it is stopped
      {{"head", "-c", "65535", "/dev/zero"}, std::string(65535, '\0')},   // as long as is kept
      {{"head", "-c", "900000", "/dev/zero"}, std::string(65536, '\0')},  // cut
      {{"cat", "/dev/zero"}, std::string(65536, '\0')},  // cut, until it is stopped
  };
  for (const auto& [command, want] : rows) {
    EXPECT_TRUE(Capture({command})[0] == want) << command[0];
  }
  EXPECT_TRUE(HasNoChildren());
}

TEST_F(FirstLinesTest, LinesComeInTheOrderOfTheCommands) {
  const Words waits = Script("cat " + Fifo());
  const Words frees = Script("echo freed > " + Fifo() + "; echo second");
  EXPECT_EQ(Capture({waits, frees, {"echo", "third"}}), (Words{"freed", "second", "third"}));
}

TEST_F(FirstLinesTest, NoMoreRunThanMayAtOnce) {
  // Its line comes last: what follows that is cut short.
  const Words alone =
      Script("mkdir " + Fifo("lock") + " && rmdir " + Fifo("lock") + " && echo alone");
  const std::vector<Words> commands(20, alone);
  EXPECT_EQ(Capture(commands, {.time_to_first_line = 10min, .at_once = 1}), Words(20, "alone"));
}

TEST_F(FirstLinesTest, EveryCommandIsRun) {
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

TEST_F(FirstLinesTest, EveryCommandIsRunAlsoAfterSeveralThatHang) {
  const Words hangs = Hanging();
  const Words want = {"", "", "", "", "answer", "", "another"};
  EXPECT_EQ(CaptureInTime(
                {hangs, hangs, hangs, hangs, {"echo", "answer"}, hangs, {"echo", "another"}}, want),
            want);
  EXPECT_TRUE(HasNoChildren());
}

TEST_F(FirstLinesTest, ThirtyTwoAreWaitedForTogether) {
  std::vector<Words> commands(31, Script("echo > " + Fifo() + "; echo freed"));
  commands.push_back(Script("exec 3<>" + Fifo() +
                            "; for n in $(seq 31); do read x <&3; done; echo frees the others"));
  Words want(31, "freed");
  want.emplace_back("frees the others");
  EXPECT_EQ(CheckForked([&] { EXPECT_EQ(Capture(commands, {.time_to_first_line = 10min}), want); }),
            0);
}

// Lets this process have so many descriptors more, and no others.
void AllowMoreDescriptors(int count) {
  const int lowest_free = ::dup(STDIN_FILENO);
  ::close(lowest_free);
  const rlim_t limit = static_cast<rlim_t>(lowest_free) + static_cast<rlim_t>(count);
  const rlimit few = {.rlim_cur = limit, .rlim_max = limit};
  ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &few), 0);
}

TEST_F(FirstLinesTest, FewDescriptorsMeanThatFewerRunAtOnce) {
  for (const int count : {6, 7, 8, 12, 20}) {
    EXPECT_EQ(CheckForked([count] {
                AllowMoreDescriptors(count);
                const CaptureLimits limits = {.time_to_first_line = 10min};
                EXPECT_EQ(Capture(std::vector<Words>(50, {"echo", "answer"}), limits),
                          Words(50, "answer"));
              }),
              0)
        << count;
  }
}

TEST_F(FirstLinesTest, ALackIsTold) {
  for (const int count : {0, 1, 2, 3, 4}) {
    EXPECT_EQ(CheckForked([count] {
                AllowMoreDescriptors(count);
                const FirstLines got = CaptureFirstLines({{"echo"}, {"no_such_program"}, {"echo"}});
                EXPECT_EQ(got.lines, Words(3));
                EXPECT_EQ(got.error, EMFILE);
              }),
              0)
        << count;
  }
  EXPECT_EQ(CheckForked([] {
              if (::geteuid() == 0) {
                ASSERT_EQ(::setuid(65534), 0);  // no limit holds for the superuser
              }
              const rlimit none = {.rlim_cur = 1, .rlim_max = 1};
              ASSERT_EQ(::setrlimit(RLIMIT_NPROC, &none), 0);
              const FirstLines got = CaptureFirstLines({{"/bin/echo"}, {"/bin/echo"}});
              EXPECT_EQ(got.lines, Words(2));
              EXPECT_EQ(got.error, EAGAIN);
            }),
            0);
}

TEST_F(FirstLinesTest, AnIgnoredSignalLeavesTheCommandsAlone) {
  const Words waits = Script("echo > " + Fifo() + "; cat " + Fifo("other"));
  const pid_t process = testing::StartForked([&waits] {
    ::signal(SIGINT, SIG_IGN);
    return Capture({waits}) == Words{"still there"} ? 0 : 1;
  });
  EXPECT_EQ(scripts_.Read("fifo"), "\n");
  ::kill(process, SIGINT);
  scripts_.Write("other", "still there\n");
  EXPECT_EQ(testing::AwaitEnd(process), 0);
}

TEST_F(FirstLinesTest, CommandsGoOnWhileTheProcessIsStopped) {
  const Words waits = Script("echo > " + Fifo() + "; cat " + Fifo("other"));
  const pid_t process = testing::StartForked([&waits] {
    ::setpgid(0, 0);  // in a group whose parent lives on in the session; no other can be stopped
    return Capture({waits}) == Words{"resumed"} ? 0 : 1;
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

TEST_F(FirstLinesTest, ThePlatformRunsThemWithTheUsualLimits) {
  LinuxPlatform platform(0, nullptr);
  const FirstLines got =
      platform.CaptureFirstLines({{"echo", "one"}, {"no_such_program"}, {"echo", "three"}});
  EXPECT_EQ(got.lines, (Words{"one", "", "three"}));
  EXPECT_EQ(got.error, 0);
}

}  // namespace

}  // namespace ptick
