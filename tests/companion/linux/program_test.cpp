// A companion as a process: its streams, its exit status, what it tells.

#include "companion/linux/program.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "companion/support/folder.h"
#include "companion/support/sample_run.h"
#include "support/forked.h"
#include "support/temp_directory.h"

namespace ptick::companion {

namespace {

using ptick::testing::RunForked;
using ptick::testing::TempDirectory;
using testing::NamesIn;
using testing::RunSample;
using testing::SampleRun;

constexpr const char* kTryHelp = "Try 'ptick-sample --help' for more information.\n";

TEST(Program, DoesItsWork) {
  const TempDirectory folder;
  const std::string file = folder.Write("file", "12345");
  struct Row {
    std::vector<std::string> arguments;
    std::string want;
  };
  const std::vector<Row> rows = {
      {{}, "Bytes  File\n    3  -\n"},
      {{file, "-"}, "Bytes  File\n    5  " + file + "\n    3  -\n"},
      {{"--form=json", file}, "[\n{\"file\":\"" + file + "\",\"bytes\":5}\n]\n"},
      {{"--form=csv", "-", "--repeat", "2"}, "file,bytes\r\n-,3\r\n-,3\r\n"},
      {{"--form=bytes"}, std::string("-\0", 2)},
      {{"--color=always"}, "\x1b[1mBytes\x1b[0m  \x1b[1mFile\x1b[0m\n    \x1b[1;31m3\x1b[0m  -\n"},
      {{"-o", "-", file}, "Bytes  File\n    5  " + file + "\n"},
  };
  for (const Row& row : rows) {
    const SampleRun run = RunSample(row.arguments, {.input = "abc"});
    EXPECT_EQ(run.out, row.want);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
  }
}

TEST(Program, WritesItsResultToAFile) {
  const TempDirectory folder;
  const SampleRun run = RunSample({"-o", folder / "out"}, {.input = "abc"});
  EXPECT_EQ(run.out + run.err, "");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(folder.Read("out"), "Bytes  File\n    3  -\n");
  // The result may be what was read.
  EXPECT_EQ(RunSample({"-o", folder / "out", "--form=csv", folder / "out"}).status, 0);
  EXPECT_EQ(folder.Read("out"), "file,bytes\r\n" + (folder / "out").native() + ",21\r\n");
}

TEST(Program, TellsAndEndsWithItsStatus) {
  const TempDirectory folder;
  const SampleRun run = RunSample({"--tell", "-o", folder / "out"});
  EXPECT_EQ(run.err, "ptick-sample: -: line 1: told\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(NamesIn(folder.Path()), std::vector<std::string>{"out"});
}

TEST(Program, HelpsOnStandardOutput) {
  const TempDirectory folder;
  const SampleRun help = RunSample({"--help", "-o", folder / "out"});
  EXPECT_EQ(help.status, 0);
  EXPECT_EQ(help.err, "");
  EXPECT_TRUE(help.out.starts_with("Usage: ptick-sample [OPTION]... [FILE]...\n")) << help.out;
  EXPECT_NE(help.out.find("\n  -o, --output=FILE "), std::string::npos) << help.out;
  const SampleRun version = RunSample({"--version"});
  EXPECT_EQ(version.status, 0);
  EXPECT_EQ(version.out + version.err, "ptick-sample " PTICK_VERSION "\n");
  EXPECT_EQ(NamesIn(folder.Path()), std::vector<std::string>{});
}

TEST(Program, SaysHowItIsUsed) {
  const TempDirectory folder;
  const SampleRun run = RunSample({"--bogus", "-o", folder / "out"});
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err, std::string("ptick-sample: unknown option '--bogus'\n") + kTryHelp);
  EXPECT_EQ(NamesIn(folder.Path()), std::vector<std::string>{});
}

TEST(Program, LeavesNothingInTrouble) {
  const TempDirectory folder;
  folder.Write("out", "old");
  const std::string none = folder / "none";
  const SampleRun run = RunSample({"-o", folder / "out", none}, {.input = "abc"});
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err, "ptick-sample: " + none + ": No such file or directory\n");
  EXPECT_EQ(NamesIn(folder.Path()), std::vector<std::string>{"out"});
  EXPECT_EQ(folder.Read("out"), "old");
  // As it was typed, whatever it holds.
  EXPECT_EQ(RunSample({"no\x1b[1m\xE9"}).err,
            "ptick-sample: no\x1b[1m\xE9: No such file or directory\n");
}

void Put(int fd, const char* file, int flags) { ::dup2(::open(file, flags), fd); }

/// Runs `program` here, with standard error in a file of the folder.
int RunHere(const TempDirectory& folder, const Program& program,
            std::vector<std::string> arguments = {}) {
  return RunForked([&] {
    Put(STDERR_FILENO, folder.Write("err", "").c_str(), O_WRONLY);
    std::string name = program.name;
    std::vector<char*> argv = {name.data()};
    for (std::string& argument : arguments) {
      argv.push_back(argument.data());
    }
    return RunProgram(program, static_cast<int>(argv.size()), argv.data());
  });
}

TEST(Program, TellsWhateverEndsIt) {
  struct Row {
    std::function<ExitStatus(Session&)> run;
    int status;
    std::string err;
  };
  const std::vector<Row> rows = {
      {[](Session& /*session*/) { return ExitStatus::kTold; }, 1, ""},
      {[](Session& /*session*/) { return ExitStatus::kTrouble; }, 2, ""},
      {[](Session& /*session*/) -> ExitStatus {
         throw Trouble({.file = "run1", .line = 7, .reason = "is bad"});
       },
       2, "p: run1: line 7: is bad\n"},
      {[](Session& /*session*/) -> ExitStatus { throw UsageError("no folder 'x'"); }, 2,
       "p: no folder 'x'\nTry 'p --help' for more information.\n"},
      {[](Session& /*session*/) -> ExitStatus { throw std::bad_alloc(); }, 2, "p: out of memory\n"},
      {[](Session& /*session*/) -> ExitStatus { throw std::runtime_error("some error"); }, 2,
       "p: some error\n"},
      {[](Session& session) {
         session.Form();
         return ExitStatus::kDone;
       },
       2, "p: the result is not open\n"},
  };
  for (const Row& row : rows) {
    const TempDirectory folder;
    const Program program = {.name = "p", .describe = [](CommandLine&) {}, .run = row.run};
    EXPECT_EQ(RunHere(folder, program), row.status);
    EXPECT_EQ(folder.Read("err"), row.err);
  }
}

TEST(Program, LeavesNoResultWithTrouble) {
  const TempDirectory folder;
  const std::string option = "--output=" + (folder / "out").native();
  for (const bool throws : {false, true}) {
    const auto run = [throws](Session& session) {
      session.OpenResult(ResultKind::kText).Write(std::string(100'000, 'x'));
      if (throws) {
        throw std::bad_alloc();
      }
      return ExitStatus::kTrouble;
    };
    const Program program = {.name = "p", .describe = [](CommandLine&) {}, .run = run};
    EXPECT_EQ(RunHere(folder, program, {option}), 2);
    EXPECT_EQ(folder.Read("err"), throws ? "p: out of memory\n" : "");
    EXPECT_EQ(NamesIn(folder.Path()), std::vector<std::string>{"err"});
  }
}

TEST(Program, SaysThatDescriptorsAreMissing) {
  const TempDirectory folder;
  const Program program = {.name = "p",
                           .describe = [](CommandLine&) {},
                           .run =
                               [](Session& session) {
                                 const rlimit limit = {.rlim_cur = 3, .rlim_max = 3};
                                 ::setrlimit(RLIMIT_NOFILE, &limit);
                                 session.OpenResult(ResultKind::kText);
                                 return ExitStatus::kDone;
                               }};
  const std::string option = "--output=" + (folder / "out").native();
  EXPECT_EQ(RunHere(folder, program, {option}), 2);
  EXPECT_EQ(folder.Read("err"), "p: " + (folder / "out").native() + ": Too many open files\n");
  EXPECT_EQ(NamesIn(folder.Path()), std::vector<std::string>{"err"});
}

TEST(BytesOfAll, AddsUpRegularFiles) {
  const TempDirectory folder;
  const std::string three = folder.Write("three", "123");
  const std::string four = folder.Write("four", "1234");
  EXPECT_EQ(BytesOfAll({}), 0U);
  EXPECT_EQ(BytesOfAll({three, four, three}), 10U);
  EXPECT_EQ(BytesOfAll({three, folder.MakeFifo("pipe")}), std::nullopt);
  EXPECT_EQ(BytesOfAll({three, "/dev/null"}), std::nullopt);
  EXPECT_EQ(BytesOfAll({three, folder / "none"}), std::nullopt);
  EXPECT_EQ(BytesOfAll({three, folder.Path()}), std::nullopt);
  EXPECT_EQ(RunForked([&] {
              Put(STDIN_FILENO, four.c_str(), O_RDONLY);
              return static_cast<int>(BytesOfAll({three, "-"}).value_or(0));
            }),
            7);
}

}  // namespace

}  // namespace ptick::companion
