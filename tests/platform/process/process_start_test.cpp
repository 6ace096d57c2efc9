#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>

#include "platform/linux/linux_platform.h"
#include "support/forked.h"
#include "support/temp_directory.h"

namespace ptick {

namespace {

// Starts the platform with those standard descriptors closed, opens a record, writes to both
// streams. The sum is 0 when nothing went astray, else it tells what did.
int RunWithClosed(const std::vector<int>& closed, const std::string& directory) {
  return testing::RunForked([&]() -> int {
    for (const int fd : closed) {
      ::close(fd);
    }
    LinuxPlatform platform(0, nullptr);
    const auto file = platform.OpenFile(directory);
    const auto record = file->OpenRecord("record");
    const int taken_over = ::fcntl(STDERR_FILENO + 1, F_GETFD) < 0 ? 1 : 0;
    int astray = 0;
    for (const int fd : closed) {
      if (fd != STDIN_FILENO) {
        const Stream stream = fd == STDOUT_FILENO ? Stream::kOutput : Stream::kDiagnostics;
        astray += platform.Write(stream, "astray") == EBADF ? 0 : 10;
        astray += platform.IsTerminal(stream) ? 20 : 0;
      }
    }
    std::array<char, 10> block = {};
    const int misread = record->Read(block) == 4U ? 0 : 2;
    return taken_over + misread + astray;
  });
}

TEST(ProcessStartTest, ClosedStandardDescriptorsAreTakenByNoFile) {
  const testing::TempDirectory directory;
  directory.Write("record", "text");
  for (const std::vector<int>& closed :
       {std::vector<int>{}, {0}, {1}, {2}, {0, 1}, {0, 2}, {1, 2}, {0, 1, 2}}) {
    EXPECT_EQ(RunWithClosed(closed, directory.Path()), 0)
        << closed.size() << " closed, the first " << (closed.empty() ? -1 : closed[0]);
    EXPECT_EQ(directory.Read("record"), "text");
  }
}

TEST(ProcessStartTest, AClosedInputHasEnded) {
  EXPECT_EQ(testing::CheckForked([] {
              ::close(STDIN_FILENO);
              LinuxPlatform platform(0, nullptr);
              EXPECT_FALSE(platform.HasKeyboard());
              EXPECT_EQ(platform.AskForKey("", "q"), std::nullopt);
            }),
            0);
}

TEST(ProcessStartTest, EndedChildrenCanBeWaitedForWhateverWasInherited) {
  EXPECT_EQ(testing::CheckForked([] {
              ::signal(SIGCHLD, SIG_IGN);
              sigset_t all = {};
              ::sigfillset(&all);
              ::sigprocmask(SIG_BLOCK, &all, nullptr);
              LinuxPlatform platform(0, nullptr);
              EXPECT_EQ(platform.RunShell("exit 5", "unread"), 5);
            }),
            0);
}

TEST(ProcessStartTest, ChildrenHaveTheUsualSignals) {
  EXPECT_EQ(testing::CheckForked([] {
              LinuxPlatform platform(0, nullptr);
              sigset_t blocked = {};
              ::sigemptyset(&blocked);
              ::sigaddset(&blocked, SIGTERM);
              ::sigprocmask(SIG_BLOCK, &blocked, nullptr);
              EXPECT_EQ(platform.RunShell("kill -PIPE $$; exit 1", ""), 128 + SIGPIPE);
              EXPECT_EQ(platform.RunShell("kill -XFSZ $$; exit 1", ""), 128 + SIGXFSZ);
              EXPECT_EQ(platform.RunShell("kill -TERM $$; exit 1", ""), 128 + SIGTERM);
            }),
            0);
}

TEST(ProcessStartTest, ChildrenGetNoDescriptorButTheStandardOnes) {
  const testing::TempDirectory directory;
  directory.Write("record", "text");
  LinuxPlatform platform(0, nullptr);
  const auto file = platform.OpenFile(directory.Path().native());
  const auto record = file->OpenRecord("record");
  const std::string list = "for fd in /proc/self/fd/*; do [ \"$(readlink $fd)\" = '" +
                           (directory / "record").native() + "' ] && exit 1; done; exit 0";
  EXPECT_EQ(platform.RunShell(list, ""), 0);
  EXPECT_EQ(platform.RunShell("exec 9< '" + (directory / "record").native() + "'; " + list, ""), 1)
      << "the list would miss an open descriptor";
}

}  // namespace

}  // namespace ptick
