// Standard streams that are full, closed or missing.

#include "companion/linux/standard_streams.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <array>
#include <string>
#include <vector>

#include "companion/support/folder.h"
#include "companion/support/sample_run.h"
#include "support/temp_directory.h"

namespace ptick::companion {

namespace {

using ptick::testing::TempDirectory;
using testing::NamesIn;
using testing::RunSample;
using testing::SampleRun;

void Put(int fd, const char* file, int flags) { ::dup2(::open(file, flags), fd); }

TEST(StandardStreams, MayBeOnAFullDisk) {
  const auto to_full = [] { Put(STDOUT_FILENO, "/dev/full", O_WRONLY); };
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{}, {"--form=csv", "-r100000"}, {"--help"}, {"--version"}}) {
    const SampleRun run = RunSample(arguments, {.prepare = to_full});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.err, "ptick-sample: standard output: No space left on device\n");
  }
}

TEST(StandardStreams, MayBeLimited) {
  const TempDirectory folder;
  const SampleRun run =
      RunSample({"--form=csv", "-r1000000", "-o", folder / "out"}, {.prepare = [] {
                  const rlimit limit = {.rlim_cur = 1'000'000, .rlim_max = 1'000'000};
                  ::setrlimit(RLIMIT_FSIZE, &limit);
                }});
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(run.err, "ptick-sample: " + (folder / "out").native() + ": File too large\n");
  EXPECT_EQ(NamesIn(folder.Path()), std::vector<std::string>{});
}

TEST(StandardStreams, MayBeClosed) {
  const std::string closed = "ptick-sample: standard output: Bad file descriptor\n";
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{}, {"--form=json"}, {"--form=bytes"}, {"--help"}}) {
    const SampleRun run = RunSample(arguments, {.prepare = [] { ::close(STDOUT_FILENO); }});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.err, closed);
  }
}

TEST(StandardStreams, AreNotMistakenForFilesWhenClosed) {
  const TempDirectory folder;
  const std::string file = folder.Write("file", "12345");
  const auto close_all = [] {
    for (const int fd : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
      ::close(fd);
    }
  };
  EXPECT_EQ(RunSample({"-o", folder / "out", file}, {.prepare = close_all}).status, 0);
  EXPECT_EQ(folder.Read("out"), "Bytes  File\n    5  " + file + "\n");
  // A message is lost, and goes into no file.
  EXPECT_EQ(RunSample({"--tell", "-o", folder / "out", file}, {.prepare = close_all}).status, 1);
  EXPECT_EQ(folder.Read("out"), "Bytes  File\n    5  " + file + "\n");
  EXPECT_EQ(folder.Read("file"), "12345");

  const SampleRun run = RunSample({}, {.prepare = [] { ::close(STDIN_FILENO); }});
  EXPECT_EQ(run.err, "ptick-sample: standard input: Bad file descriptor\n");
  EXPECT_EQ(run.status, 2);
}

TEST(StandardStreams, AreLeftInSilenceByTheirReaders) {
  const auto to_closed_pipe = [] {
    std::array<int, 2> ends = {};
    ASSERT_EQ(::pipe(ends.data()), 0);
    ::dup2(ends[1], STDOUT_FILENO);
    ::close(ends[0]);
    ::close(ends[1]);
  };
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{}, {"-r100000"}, {"--form=json", "-r100000"}, {"--help"}}) {
    const SampleRun run = RunSample(arguments, {.prepare = to_closed_pipe});
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
  }
  // What it has to tell it tells, and its status stays.
  const SampleRun run = RunSample({"--tell", "-r100000"}, {.prepare = to_closed_pipe});
  EXPECT_EQ(run.err, "ptick-sample: -: line 1: told\n");
  EXPECT_EQ(run.status, 1);
}

TEST(StandardStreams, DoNotChangeTheStatus) {
  EXPECT_EQ(RunSample({"--bogus"}, {.prepare = [] { ::close(STDERR_FILENO); }}).status, 2);
  EXPECT_EQ(
      RunSample({"--tell"}, {.prepare = [] { Put(STDERR_FILENO, "/dev/full", O_WRONLY); }}).status,
      1);
}

}  // namespace

}  // namespace ptick::companion
