#include "platform/linux/write_all.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <string>

#include "platform/linux/linux_platform.h"
#include "platform/linux/process/process_start.h"
#include "platform/linux/unique_fd.h"
#include "support/forked.h"
#include "support/temp_directory.h"

namespace ptick {

namespace {

using testing::CheckForked;

struct Pipe {
  Pipe() {
    std::array<int, 2> ends = {};
    EXPECT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
    read = UniqueFd(ends[0]);
    write = UniqueFd(ends[1]);
  }
  UniqueFd read;
  UniqueFd write;
};

// What comes out of a pipe until its other end is closed.
std::string ReadToEnd(int pipe) {
  std::string text;
  std::array<char, 5000> block = {};
  ssize_t count = 0;
  while ((count = ::read(pipe, block.data(), block.size())) > 0) {
    text.append(block.data(), static_cast<std::size_t>(count));
  }
  return text;
}

TEST(WriteAllTest, WritesAllBytesToADescriptorThatTakesThemInParts) {
  std::string text;
  for (int i = 0; i < 100000; ++i) {
    text += std::to_string(i) + "\n";
  }
  for (const int flags : {0, O_NONBLOCK}) {
    Pipe pipe;
    ASSERT_EQ(::fcntl(pipe.write.Get(), F_SETFL, flags), 0);
    const pid_t writer = testing::StartForked([&pipe, &text] {
      pipe.read.Close();
      return WriteAll(pipe.write.Get(), text);
    });
    pipe.write.Close();
    const std::string got = ReadToEnd(pipe.read.Get());
    EXPECT_EQ(testing::AwaitEnd(writer), 0);
    EXPECT_TRUE(got == text) << got.size() << " of " << text.size() << " bytes";
  }
}

TEST(WriteAllTest, TellsWhyBytesAreNotTaken) {
  EXPECT_EQ(WriteAll(UniqueFd(::open("/dev/full", O_WRONLY | O_CLOEXEC)).Get(), "x"), ENOSPC);
  EXPECT_EQ(WriteAll(UniqueFd(::open("/dev/null", O_RDONLY | O_CLOEXEC)).Get(), "x"), EBADF);
  EXPECT_EQ(WriteAll(-1, "x"), EBADF);
  EXPECT_EQ(WriteAll(-1, ""), 0);
}

TEST(WriteAllTest, TellsThatTheReaderHasGone) {
  EXPECT_EQ(CheckForked([] {
              PrepareProcess();
              Pipe pipe;
              pipe.read.Close();
              EXPECT_EQ(WriteAll(pipe.write.Get(), "x"), EPIPE);
            }),
            0);
}

TEST(WriteAllTest, TellsThatTheFileMayGrowNoMore) {
  const testing::TempDirectory directory;
  EXPECT_EQ(CheckForked([&directory] {
              PrepareProcess();
              const rlimit limit = {.rlim_cur = 5, .rlim_max = 5};
              ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
              const UniqueFd file(
                  ::open((directory / "file").c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
              EXPECT_EQ(WriteAll(file.Get(), "1234567"), EFBIG);
            }),
            0);
  EXPECT_EQ(directory.Read("file"), "12345");
}

TEST(WriteAllTest, EachStreamHasItsDescriptor) {
  const testing::TempDirectory directory;
  EXPECT_EQ(CheckForked([&directory] {
              const auto send_to = [&directory](int fd, std::string_view name) {
                const UniqueFd file(
                    ::open((directory / name).c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
                ASSERT_EQ(::dup2(file.Get(), fd), fd);
              };
              LinuxPlatform platform(0, nullptr);
              send_to(STDOUT_FILENO, "output");
              send_to(STDERR_FILENO, "terminal");
              EXPECT_EQ(platform.Write(Stream::kOutput, "rows"), 0);
              EXPECT_EQ(platform.Write(Stream::kDiagnostics, "message"), 0);
              EXPECT_FALSE(platform.IsTerminal(Stream::kOutput));
              EXPECT_FALSE(platform.IsTerminal(Stream::kDiagnostics));
            }),
            0);
  EXPECT_EQ(directory.Read("output"), "rows");
  EXPECT_EQ(directory.Read("terminal"), "message");
}

}  // namespace

}  // namespace ptick
