// A single profile that cannot be read to its end.

#include <gtest/gtest.h>

#include <string>

#include "support/memory_platform.h"
#include "support/profiles.h"
#include "support/program_run.h"

namespace ptick {

namespace {

TEST(UnreadableProfile, IsToldRatherThanALineBeforeTheFailure) {
  MemoryPlatform platform;
  platform.block_size = 8;
  platform.files["."]["late"] = {.text = testing::Records({"bogus|1", "ticks|2"}),
                                 .fails_after = 30};
  EXPECT_EQ(testing::RunProgram({"late"}, platform), 1);
  EXPECT_EQ(platform.on_terminal,
            "ptick: [202] cannot read record 'late' in '.': Input/output error\n");
  EXPECT_EQ(platform.printed, "");
}

}  // namespace

}  // namespace ptick
