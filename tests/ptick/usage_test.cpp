#include "ptick/usage.h"

#include <gtest/gtest.h>

#include "support/memory_platform.h"
#include "support/program_run.h"

namespace ptick {

namespace {

TEST(Usage, IsPrintedOnTheTerminal) {
  MemoryPlatform platform;
  Output output(platform, "ptick");
  PrintUsage(output);
  output.Finish();
  EXPECT_EQ(platform.on_terminal, testing::UsageText());
  EXPECT_EQ(platform.printed, "");
}

}  // namespace

}  // namespace ptick
