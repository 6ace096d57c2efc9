// Signals that end a companion, at any moment, leave nothing half done: the programs themselves.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

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
using testing::StartProgram;
using testing::StoppedRun;

constexpr const char* kProfile =
    "PROFILE:program\tA\nPROFILE:hertz\t100\nPROFILE:startclock\t1\nPROFILE:starttime\t1773043331\n"
    "PROFILE:perform\tstartclock\t1\tendclock\t2\tcmd\tLIST\nPROFILE:trace\tA\t1\t3000\n"
    "PROFILE:trace\tA\t2\t70\nPROFILE:trace\tB\t9\t4000\nPROFILE:subroutine_call\tA B\t4\n";

/// Signals at all moments of runs of programs, one moment after the other.
class SignalsToPrograms : public ::testing::Test {
 protected:
  void SetUp() override {
    fs::create_directory(folder_ / "src");
    folder_.Write("run1", kProfile);
    folder_.Write("run2", std::string(kProfile) + "PROFILE:trace\tA\t1\t900\n");
    folder_.Write("bad", "PROFILE:trcae\tA\n");
    folder_.Write("src/A", "one\ntwo\nthree\n");
    before_ = NamesIn(folder_.Path());
  }

  // The program with its result in "out"; its other operands are names in the folder, but options.
  std::vector<std::string> Command(const std::string& line) const {
    std::vector<std::string> command;
    for (std::size_t at = 0; at < line.size();) {
      const std::size_t end = std::min(line.find(' ', at), line.size());
      const std::string word = line.substr(at, end - at);
      const std::size_t value = word.find("=@");
      if (command.empty()) {
        command = {std::string(PTICK_COMPANION_DIR "/") + word, "-o", folder_ / "out"};
      } else if (value != std::string::npos) {
        command.push_back(word.substr(0, value + 1) + folder_.Path().native() + "/" +
                          word.substr(value + 2));
      } else {
        command.push_back(word.starts_with('-') ? word : (folder_ / word).native());
      }
      at = end + 1;
    }
    return command;
  }

  // What the program writes when nothing is in its way.
  std::string Result(const std::vector<std::string>& command) {
    const int status = AwaitEnd(StartProgram(command, [] { ::close(STDERR_FILENO); }));
    EXPECT_LE(status, 1) << command.front();
    std::string result = folder_.Read("out");
    fs::remove(folder_ / "out");
    return result;
  }

  // Which signal, and whether there is an old result, changes from moment to moment; ptick-sample
  // gets all of them. Returns whether there are more moments.
  bool Signal(const std::vector<std::string>& command, const std::string& result, int moment) {
    constexpr std::array kSignals = {SIGTERM, SIGINT, SIGHUP};
    const int signal = kSignals.at(static_cast<std::size_t>(moment % 3));
    const bool is_old_there = moment % 2 == 1;
    if (is_old_there) {
      folder_.Write("out", "old");
    }
    const StoppedRun run(command, signal, moment);
    if (run.Status() == StoppedRun::kNoTracing) {
      is_traced_ = false;
      return false;
    }
    const bool is_there = fs::exists(folder_ / "out");
    const std::string out = folder_.Read("out");
    fs::remove(folder_ / "out");
    EXPECT_EQ(NamesIn(folder_.Path()), before_) << "moment " << moment;
    if (run.Status() <= 1) {  // it came too late, or not at all
      EXPECT_EQ(out, result) << "moment " << moment;
    } else {
      EXPECT_EQ(run.Status(), 128 + signal) << "moment " << moment;
      EXPECT_TRUE(out == result || (is_there == is_old_there && out == (is_old_there ? "old" : "")))
          << "moment " << moment << ": " << out;
    }
    return run.WasSignalled() && !HasFailure();
  }

  TempDirectory folder_;
  std::vector<std::string> before_;
  bool is_traced_ = true;
};

TEST_F(SignalsToPrograms, LeaveNothingAtAnyMoment) {
  for (const char* line : {
           "ptick-merge run1 run2",
           "ptick-merge -k run1 bad run2",
           "ptick-diff run1 run2",
           "ptick-diff --json --by=command run1 run2",
           "ptick-diff --csv --old-source=@src --new-source=@src run1 run2",
           "ptick-annotate --source=@src run1",
           "ptick-export --to=json run1",
           "ptick-export --to=csv run1",
           "ptick-export --to=callgrind run1",
           "ptick-export --to=pprof run1",
           "ptick-export --to=speedscope run1",
           "ptick-export --to=trace run1",
           "ptick-export --to=folded run1",
           "ptick-view run1",
       }) {
    const std::vector<std::string> command = Command(line);
    const std::string result = Result(command);
    ASSERT_FALSE(result.empty()) << line;
    int moment = 0;
    while (Signal(command, result, moment)) {
      ++moment;
    }
    if (!is_traced_) {
      GTEST_SKIP() << "the system does not let processes be traced";
    }
    ASSERT_FALSE(HasFailure()) << line;
    // It opens, writes, synchronises and renames at least.
    EXPECT_GT(moment, 10) << line;
  }
}

}  // namespace

}  // namespace ptick::companion
