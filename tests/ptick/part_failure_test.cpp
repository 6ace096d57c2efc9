// Runs that cannot do all that was asked for: they say so, do the rest, and end with a status.

#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <vector>

#include "support/profiles.h"
#include "support/program_run.h"

namespace ptick {

namespace {

using testing::Records;

class PartFailureTest : public ::testing::Test {
 protected:
  PartFailureTest() {
    platform_.files["."]["run1"].text =
        Records({"hertz|100", "shared_object|a.so|1", "shared_object|b.so|1",
                 "subroutine_call|A B|2", "perform|startclock|1|endclock|2|cmd|LIST"});
    platform_.command_outputs["size a.so"] = "sizes of a\n";
    platform_.command_errors["size b.so"] = EAGAIN;
  }

  int Run(const std::vector<std::string>& arguments) {
    platform_.printed.clear();
    platform_.on_terminal.clear();
    return testing::RunProgram(arguments, platform_);
  }

  MemoryPlatform platform_;
};

const std::string kMessage = "ptick: cannot run size: Resource temporarily unavailable\n";

TEST_F(PartFailureTest, AReportWithoutAllSizesIsPrintedAndEndsWithOne) {
  EXPECT_EQ(Run({"-ov", "run1"}), 1);
  EXPECT_EQ(platform_.on_terminal, kMessage);
  EXPECT_NE(platform_.printed.find("\na.so" + std::string(56, ' ') + " sizes of a\nb.so\n"),
            std::string::npos)
      << platform_.printed;
  EXPECT_EQ(Run({"-o", "run1"}), 0) << "no sizes are asked for";
}

TEST_F(PartFailureTest, TheReportsAfterItArePrintedToo) {
  EXPECT_EQ(Run({"-Av", "run1"}), 1);
  EXPECT_EQ(platform_.on_terminal, kMessage);
  EXPECT_NE(platform_.printed.find("LIST"), std::string::npos) << platform_.printed;
  platform_.files["."]["run1"].text = Records({"shared_object|b.so|1"});
  EXPECT_EQ(Run({"-Av", "run1"}), 2) << "a failure that ends the run has its own status";
}

TEST_F(PartFailureTest, TheStatusStaysWhereTheReaderLeaves) {
  platform_.output_error = EPIPE;
  EXPECT_EQ(Run({"-ov", "run1"}), 1);
  EXPECT_EQ(platform_.on_terminal, kMessage);

  platform_.output_error = 0;
  platform_.output_is_terminal = platform_.keyboard = true;
  platform_.size.rows = 3;
  platform_.keys = {'q'};
  EXPECT_EQ(Run({"-ov", "run1"}), 1);
}

TEST_F(PartFailureTest, UsageThatCannotBeWrittenEndsWithOne) {
  struct Row {
    int error;
    int want;
  };
  for (const Row& row : {Row{0, 0}, Row{EPIPE, 0}, Row{ENOSPC, 1}, Row{EBADF, 1}, Row{EIO, 1}}) {
    platform_.diagnostics_error = row.error;
    EXPECT_EQ(Run({"-h"}), row.want) << row.error;
    EXPECT_EQ(Run({"-x"}), 1) << row.error;
  }
}

}  // namespace

}  // namespace ptick
