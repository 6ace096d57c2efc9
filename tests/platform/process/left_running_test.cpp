// Whatever ends commands, the shell, or the process that runs them: nothing that they started goes
// on running.

#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <string>
#include <vector>

#include "platform/linux/process/first_lines.h"
#include "platform/linux/process/process_group.h"
#include "platform/linux/process/shell.h"
#include "support/environment.h"
#include "support/forked.h"
#include "support/temp_directory.h"

namespace ptick {

namespace {

using namespace std::chrono_literals;
using testing::CheckForked;

// From now on what a child leaves running becomes a child of this process.
void AdoptOrphans() { ASSERT_EQ(::prctl(PR_SET_CHILD_SUBREAPER, 1), 0); }

// Waits for all that was left to end. A minute's patience, then the process is ended by its alarm.
void AwaitOrphans() {
  while (::waitpid(-1, nullptr, 0) > 0 || errno == EINTR) {
  }
}

class LeftRunningTest : public ::testing::Test {
 protected:
  LeftRunningTest() { scripts_.MakeFifo("started"); }

  std::string Path(const std::string& name) const { return (scripts_ / name).native(); }
  // Waits for what never comes.
  std::string Wait() const { return "read x < " + Path("never"); }

  FirstLines Capture(const std::string& body, std::chrono::nanoseconds limit = 10min) const {
    scripts_.WriteScript("script", body);
    return CaptureFirstLines({{Path("script")}}, {.time_to_first_line = limit});
  }

  const testing::TempDirectory scripts_;
  const std::filesystem::path never_ = scripts_.MakeFifo("never");
};

TEST_F(LeftRunningTest, AfterItsLineACommandEndsWithAllThatItStarted) {
  const std::string background = "{ " + Wait() + "; } & ";
  for (const std::string& body : {
           background + "echo line; " + Wait(),
           background + "echo line",  // ends by itself
           "exec 3>&1 >&- 2>&-; { " + Wait() + "; } 3>&- & printf line >&3; exec 3>&-; " + Wait(),
       }) {
    EXPECT_EQ(CheckForked([&] {
                AdoptOrphans();
                EXPECT_EQ(Capture(body).lines, std::vector<std::string>{"line"});
                AwaitOrphans();
              }),
              0)
        << body;
  }
}

TEST_F(LeftRunningTest, AfterItsTimeACommandEndsWithAllThatItStarted) {
  EXPECT_EQ(CheckForked([this] {
              AdoptOrphans();
              const std::string body =
                  "{ " + Wait() + "; } & echo $! > " + Path("background") + "; " + Wait();
              for (auto limit = 20ms; scripts_.Read("background").empty(); limit *= 2) {
                Capture(body, limit);
                AwaitOrphans();
              }
            }),
            0);
}

TEST_F(LeftRunningTest, TheShellEndsWithAllThatItStarted) {
  EXPECT_EQ(CheckForked([this] {
              AdoptOrphans();
              const std::string line = "exec 3<&0; { " + Wait() + "; } & exit 6";
              EXPECT_EQ(RunShellLine(line, std::string(1'000'000, 'x')), 6);
              AwaitOrphans();
            }),
            0);
}

TEST_F(LeftRunningTest, AGroupEndsWithItsOwner) {
  EXPECT_EQ(CheckForked([this] {
              AdoptOrphans();
              {
                ProcessGroup group;
                const std::string line =
                    "{ " + Wait() + "; } & echo > " + Path("started") + "; " + Wait();
                ASSERT_EQ(group.Start("/bin/sh", {"sh", "-c", line}, {.input = STDIN_FILENO}), 0);
                EXPECT_EQ(scripts_.Read("started"), "\n");
              }
              AwaitOrphans();
            }),
            0);
}

// What the process does that is ended meanwhile.
enum class Work { kCapture, kShell, kShellWithMuchInput };

class EndedProcessTest : public LeftRunningTest, public ::testing::WithParamInterface<Work> {
 protected:
  // Runs until it is ended from outside.
  void Run(const std::string& body) const {
    switch (GetParam()) {
      case Work::kCapture:
        Capture(body);
        break;
      case Work::kShell:
        RunShellLine(body, "");
        break;
      case Work::kShellWithMuchInput:
        RunShellLine(body, std::string(1'000'000, 'x'));
        break;
    }
  }
};

TEST_P(EndedProcessTest, LeavesNothing) {
  for (const int signal :
       {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGUSR1, SIGKILL, SIGSEGV, SIGVTALRM}) {
    EXPECT_EQ(CheckForked([&] {
                AdoptOrphans();
                const pid_t process = testing::StartForked([this] {
                  const rlimit no_core = {.rlim_cur = 0, .rlim_max = 0};
                  ::setrlimit(RLIMIT_CORE, &no_core);
                  ::signal(SIGSEGV, SIG_DFL);
                  Run("trap '' INT TERM HUP; { " + Wait() + "; } & echo > " + Path("started") +
                      "; " + Wait());
                  return 0;
                });
                EXPECT_EQ(scripts_.Read("started"), "\n");
                ::kill(process, signal);
                EXPECT_EQ(testing::AwaitEnd(process), 128 + signal);
                AwaitOrphans();
              }),
              0)
        << signal;
  }
}

// Not even a program that closes all descriptors that it knows nothing of stays.
TEST_P(EndedProcessTest, LeavesNothingThatHasLetGoOfIt) {
  EXPECT_EQ(
      CheckForked([this] {
        AdoptOrphans();
        const pid_t process = testing::StartForked([this] {
          Run("exec bash -c 'for ((n = 3; n < 64; ++n)); do eval \"exec $n<&-\"; done; echo > " +
              Path("started") + "; " + Wait() + "'");
          return 0;
        });
        EXPECT_EQ(scripts_.Read("started"), "\n");
        ::kill(process, SIGKILL);
        EXPECT_EQ(testing::AwaitEnd(process), 128 + SIGKILL);
        AwaitOrphans();
      }),
      0);
}

// A child that has just been made, and is not the program yet, must not stay either.
TEST_P(EndedProcessTest, LeavesNothingWhenItIsKilledAtAnyMoment) {
  EXPECT_EQ(CheckForked([this] {
              AdoptOrphans();
              for (useconds_t moment = 0; moment < 6000; moment += 150) {
                const pid_t process = testing::StartForked([this] {
                  Run(Wait());
                  return 0;
                });
                ::usleep(moment);
                ::kill(process, SIGKILL);
                EXPECT_EQ(testing::AwaitEnd(process), 128 + SIGKILL);
                AwaitOrphans();
              }
            }),
            0);
}

std::string WorkName(const ::testing::TestParamInfo<Work>& info) {
  constexpr std::array kNames = {"Capture", "Shell", "ShellWithMuchInput"};
  return kNames.at(static_cast<std::size_t>(info.param));
}

INSTANTIATE_TEST_SUITE_P(While, EndedProcessTest,
                         ::testing::Values(Work::kCapture, Work::kShell, Work::kShellWithMuchInput),
                         WorkName);

}  // namespace

}  // namespace ptick
