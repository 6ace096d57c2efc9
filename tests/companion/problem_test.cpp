#include "companion/problem.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <optional>
#include <string_view>
#include <vector>

namespace ptick::companion {

namespace {

TEST(Problem, IsALine) {
  struct Row {
    Problem problem;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {{.file = "run1", .line = 12, .reason = "unknown record type: PROFILE:trcae"},
       "ptick-diff: run1: line 12: unknown record type: PROFILE:trcae\n"},
      {{.file = "run1", .line = std::nullopt, .reason = "cannot be read"},
       "ptick-diff: run1: cannot be read\n"},
      {{.file = std::nullopt, .line = std::nullopt, .reason = "out of luck"},
       "ptick-diff: out of luck\n"},
      {{.file = "", .line = std::nullopt, .reason = "is nothing"}, "ptick-diff: '': is nothing\n"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(MessageLine("ptick-diff", row.problem), row.want);
  }
}

TEST(Problem, IsTroubleWithItsReason) {
  const Trouble of_system("run1", ENOENT);
  EXPECT_EQ(MessageLine("p", of_system.What()), "p: run1: No such file or directory\n");
  EXPECT_STREQ(of_system.what(), "No such file or directory");
  EXPECT_EQ(MessageLine("p", Trouble("no input is left").What()), "p: no input is left\n");
}

TEST(InputName, IsReadable) {
  EXPECT_EQ(InputName("-"), "standard input");
  EXPECT_EQ(InputName("./-"), "./-");
  EXPECT_EQ(InputName("run1"), "run1");
  EXPECT_EQ(InputName(""), "");
}

}  // namespace

}  // namespace ptick::companion
