// What the system refuses ends a companion with a message and status 2, and leaves nothing.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "companion/support/failing_memory.h"
#include "companion/support/folder.h"
#include "companion/support/sample.h"
#include "companion/support/sample_run.h"
#include "companion/support/system_fault.h"
#include "support/forked.h"
#include "support/temp_directory.h"

namespace ptick::companion {

namespace {

namespace fs = std::filesystem;
using ptick::testing::RunForked;
using ptick::testing::TempDirectory;
using testing::CallArgument;
using testing::FailAllocationsFrom;
using testing::FailSystemCall;
using testing::NamesIn;
using testing::RunSample;
using testing::SampleRun;
using testing::StopFailingAllocations;

constexpr int kNoFaults = 97;

TEST(Faults, OfTheSystemAreTold) {
  struct Row {
    std::string name;
    long call;
    int error;
    std::optional<CallArgument> only;
    std::string want;
  };
  const std::vector<Row> rows = {
      {"creating", SYS_openat, ENOSPC, CallArgument{.number = 2, .bits = O_EXCL},
       "No space left on device"},
      {"opening the folder", SYS_openat, EMFILE, CallArgument{.number = 2, .bits = O_PATH},
       "Too many open files"},
      {"naming", SYS_getrandom, EPERM, std::nullopt, "Operation not permitted"},
      {"looking at the old file", SYS_faccessat2, EROFS, std::nullopt, "Read-only file system"},
      {"its mode", SYS_fchmod, EPERM, std::nullopt, "Operation not permitted"},
      {"synchronising", SYS_fsync, EIO, std::nullopt, "Input/output error"},
      {"synchronising to a full disk", SYS_fsync, ENOSPC, std::nullopt, "No space left on device"},
      {"renaming", SYS_renameat, EACCES, std::nullopt, "Permission denied"},
      {"renaming in another way", SYS_renameat2, EACCES, std::nullopt, "Permission denied"},
  };
  int seen = 0;
  for (const Row& row : rows) {
    const TempDirectory folder;
    folder.Write("out", "old");
    const std::string file = folder / "out";
    const SampleRun run = RunSample({"-o", file}, {.prepare = [&row] {
                                      if (!FailSystemCall(row.call, row.error, row.only)) {
                                        ::_exit(kNoFaults);
                                      }
                                    }});
    if (run.status == kNoFaults) {
      GTEST_SKIP() << "the system lets no process filter its calls";
    }
    if (run.status == 0) {
      continue;  // the C library makes another call of it
    }
    ++seen;
    EXPECT_EQ(run.status, 2) << row.name;
    EXPECT_EQ(run.err, "ptick-sample: " + file + ": " + row.want + "\n") << row.name;
    EXPECT_EQ(run.out, "") << row.name;
    EXPECT_EQ(folder.Read("out"), "old") << row.name;
    EXPECT_EQ(NamesIn(folder.Path()), std::vector<std::string>{"out"}) << row.name;
  }
  EXPECT_GE(seen, 8);
}

TEST(Faults, ThatDoNotMatterAreNone) {
  struct Row {
    std::string name;
    long call;
    int error;
  };
  for (const Row& row : {Row{"nothing to synchronise", SYS_fsync, EINVAL},
                         Row{"no synchronising at all", SYS_fsync, ENOSYS},
                         Row{"the owner stays", SYS_fchown, EPERM}}) {
    const TempDirectory folder;
    folder.Write("out", "old");
    if (::geteuid() == 0) {
      ASSERT_EQ(::chown((folder / "out").c_str(), 1234, 4321), 0);
    }
    const SampleRun run = RunSample({"-o", folder / "out"}, {.prepare = [&row] {
                                      if (!FailSystemCall(row.call, row.error)) {
                                        ::_exit(kNoFaults);
                                      }
                                    }});
    if (run.status == kNoFaults) {
      GTEST_SKIP() << "the system lets no process filter its calls";
    }
    EXPECT_EQ(run.status, 0) << row.name;
    EXPECT_EQ(run.err, "") << row.name;
    EXPECT_EQ(folder.Read("out"), "Bytes  File\n    0  -\n") << row.name;
  }
}

constexpr int kRanOut = 16;

/// Runs ptick-sample here, with memory up to an allocation. Returns its status, kRanOut added where
/// there were more.
int RunWithMemory(const TempDirectory& folder, std::vector<std::string> arguments, long number) {
  return RunForked([&] {
    ::dup2(::open("/dev/null", O_RDWR), STDIN_FILENO);
    ::dup2(STDIN_FILENO, STDOUT_FILENO);
    ::dup2(::open(folder.Write("err", "").c_str(), O_WRONLY), STDERR_FILENO);
    std::string name = "ptick-sample";
    std::vector<char*> argv = {name.data()};
    for (std::string& argument : arguments) {
      argv.push_back(argument.data());
    }
    SampleOptions options;
    const Program program = SampleProgram(options);
    FailAllocationsFrom(number);
    const int status = RunProgram(program, static_cast<int>(argv.size()), argv.data());
    return StopFailingAllocations() ? status + kRanOut : status;
  });
}

TEST(Faults, OfMemoryAreToldWhereverTheyAre) {
  const std::vector<std::vector<std::string>> forms = {
      {"--form=text", "--color=always"},
      {"--form=json"},
      {"--form=csv"},
      {"--form=bytes"},
      {"--help"},
      {"--bogus"},
      {"--tell"},
      {"no\xE9"},
  };
  const TempDirectory folder;
  for (std::vector<std::string> arguments : forms) {
    const std::string form = arguments[0];
    arguments.insert(arguments.end(), {"-r100", "-o", folder / "out"});
    long number = 0;
    for (bool ran_out = true; ran_out;) {
      ++number;
      ASSERT_LT(number, 5000) << form;
      const int status = RunWithMemory(folder, arguments, number);
      ran_out = status >= kRanOut;
      if (ran_out) {
        ASSERT_EQ(status, 2 + kRanOut) << form << " " << number;
        ASSERT_TRUE(folder.Read("err").ends_with("ptick-sample: out of memory\n"))
            << form << " " << number << " " << folder.Read("err");
        ASSERT_EQ(NamesIn(folder.Path()), std::vector<std::string>{"err"}) << form << " " << number;
      }
    }
    EXPECT_GT(number, 10) << form;
    fs::remove(folder / "out");
  }
}

}  // namespace

}  // namespace ptick::companion
