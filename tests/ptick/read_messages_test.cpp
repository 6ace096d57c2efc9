#include "ptick/read_messages.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <string_view>
#include <vector>

#include "support/memory_platform.h"

namespace ptick {

namespace {

TEST(ReadMessages, NameWhatAndWhereAndTheSystemsReason) {
  using Kind = ReadProblem::Kind;
  struct Row {
    Kind kind;
    RecordPlace place;
    int error;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {Kind::kCannotOpenFile,
       {"dir", "run1"},
       ENOENT,
       "ptick: [201] cannot open file 'dir': No such file or directory\n"},
      {Kind::kCannotOpenFile,
       {"it's", "x"},
       EACCES,
       "ptick: [201] cannot open file 'it's': Permission denied\n"},
      {Kind::kCannotReadRecord,
       {".", "run1"},
       EISDIR,
       "ptick: [202] cannot read record 'run1' in '.': Is a directory\n"},
      {Kind::kCannotReadRecord,
       {"a/b", ""},
       EIO,
       "ptick: [202] cannot read record '' in 'a/b': Input/output error\n"},
  };
  for (const Row& row : rows) {
    MemoryPlatform platform;
    Output output(platform, "ptick");
    ReadProblem problem;
    problem.kind = row.kind;
    problem.place = row.place;
    problem.error = row.error;
    PrintProblem(problem, output);
    EXPECT_EQ(platform.on_terminal, row.want);
    EXPECT_EQ(platform.printed, "");
  }
}

TEST(ReadMessages, ShowAnInvalidLineAsItWas) {
  MemoryPlatform platform;
  Output output(platform, "ptick");
  ReadProblem problem;
  problem.kind = ReadProblem::Kind::kInvalidLine;
  problem.line = 7;
  problem.text = "bogus\t1";
  PrintProblem(problem, output);
  EXPECT_EQ(platform.on_terminal, "Invalid format in profile file at line 7\n\tbogus\t1\n");
}

}  // namespace

}  // namespace ptick
