// Signals that end a companion, at any moment, leave nothing half done: ptick-sample.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include "companion/linux/signal_cleanup.h"
#include "companion/linux/temporary_file.h"
#include "companion/support/folder.h"
#include "companion/support/sample_run.h"
#include "companion/support/stopped_run.h"
#include "support/forked.h"
#include "support/temp_directory.h"

namespace ptick::companion {

namespace {

namespace fs = std::filesystem;
using ptick::testing::AwaitEnd;
using ptick::testing::TempDirectory;
using testing::NamesIn;
using testing::Start;
using testing::StartSample;
using testing::StoppedRun;

TEST(Signals, LeaveNothingAtAnyMoment) {
  const TempDirectory folder;
  const std::string result = "file,bytes\r\n" + (folder / "in").native() + ",5\r\n";
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    for (const bool is_old_there : {false, true}) {
      int moment = 0;
      for (bool was_signalled = true; was_signalled; ++moment) {
        folder.Write("in", "12345");
        fs::remove(folder / "out");
        if (is_old_there) {
          folder.Write("out", "old");
        }
        const StoppedRun run({PTICK_SAMPLE, "--form=csv", "-o", folder / "out", folder / "in"},
                             signal, moment);
        if (run.Status() == StoppedRun::kNoTracing) {
          GTEST_SKIP() << "the system does not let processes be traced";
        }
        was_signalled = run.WasSignalled();
        const std::string out = folder.Read("out");
        if (run.Status() == 0) {
          // It came too late, or not at all.
          ASSERT_EQ(out, result);
        } else {
          ASSERT_EQ(run.Status(), 128 + signal) << "moment " << moment;
          ASSERT_TRUE(out == result || out == (is_old_there ? "old" : "")) << out;
          ASSERT_EQ(fs::exists(folder / "out"), is_old_there || !out.empty()) << moment;
        }
        fs::remove(folder / "out");
        ASSERT_EQ(NamesIn(folder.Path()), std::vector<std::string>{"in"}) << "moment " << moment;
      }
      // It opens, writes, synchronises and renames at least.
      EXPECT_GT(moment, 10);
    }
  }
}

TEST(Signals, ThatAreIgnoredStayIgnored) {
  const TempDirectory folder;
  const fs::path fifo = folder.MakeFifo("in");
  const pid_t process = StartSample({"-o", folder / "out", fifo}, [] {
    for (const int signal : {SIGHUP, SIGINT}) {
      ::signal(signal, SIG_IGN);
    }
  });
  {
    // It has opened its result by the time it reads.
    std::ofstream input(fifo);
    ::kill(process, SIGHUP);
    ::kill(process, SIGINT);
    input << "abc";
  }
  EXPECT_EQ(AwaitEnd(process), 0);
  EXPECT_EQ(folder.Read("out"), "Bytes  File\n    3  " + fifo.native() + "\n");
}

TEST(Signals, LeaveNothingOfSeveralThreads) {
  const TempDirectory folder;
  for (int round = 0; round < 60; ++round) {
    const pid_t process = Start([&folder]() -> int {
      InstallSignalCleanup();
      const auto make_files = [&folder](const std::string& name) {
        while (true) {
          UniqueFd directory(::open(folder.Path().c_str(), O_PATH | O_CLOEXEC));
          TemporaryFile file(std::move(directory), "stem", 0666);
          if (file.BecomePermanent(name) != 0) {
            ::_exit(1);
          }
          UniqueFd again(::open(folder.Path().c_str(), O_PATH | O_CLOEXEC));
          const TemporaryFile left(std::move(again), "stem", 0666);
        }
      };
      std::thread other(make_files, "one");
      make_files("two");
      return 0;
    });
    while (!fs::exists(folder / "one") || !fs::exists(folder / "two")) {
      std::this_thread::yield();
    }
    ::usleep(static_cast<useconds_t>(round * 50));
    ::kill(process, SIGTERM);
    ASSERT_EQ(AwaitEnd(process), 128 + SIGTERM);
    ASSERT_EQ(NamesIn(folder.Path()), (std::vector<std::string>{"one", "two"}));
    fs::remove(folder / "one");
    fs::remove(folder / "two");
  }
}

TEST(Signals, TakeTheirUsualEffect) {
  for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGALRM, SIGUSR1, SIGXCPU}) {
    EXPECT_EQ(AwaitEnd(Start([signal] {
                InstallSignalCleanup();
                ::raise(signal);
                return 0;
              })),
              128 + signal);
  }
}

}  // namespace

}  // namespace ptick::companion
