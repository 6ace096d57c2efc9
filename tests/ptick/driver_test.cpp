#include "ptick/driver.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/profiles.h"
#include "support/program_run.h"

namespace ptick {

namespace {

using testing::Records;
using testing::UsageText;

class DriverTest : public ::testing::Test {
 protected:
  DriverTest() {
    platform_.files["."]["run1"].text = Records({"program|PROG", "ticks|4", "trace|PROG|10|3"});
    platform_.files["."]["run2"].text = Records({"ticks|4", "trace|PROG|10|1"});
    platform_.files["."]["bad"].text = Records({"ticks|4", "trace|PROG|10|3", "bogus|1"});
    platform_.port_results[5] = 0;
    platform_.port_results[9] = 111;
  }

  int Run(const std::vector<std::string>& arguments) {
    return testing::RunProgram(arguments, platform_);
  }

  /// Whether a run has looked for files at all.
  bool LookedForFiles() const {
    return !platform_.opened_files.empty() || !platform_.reads.empty();
  }

  MemoryPlatform platform_;
};

const std::string_view kColumns = "Source name          Line#  Ticks    %      \n";

TEST_F(DriverTest, PrintsThePerLineReportOfAProfile) {
  EXPECT_EQ(Run({"run1"}), 0);
  EXPECT_EQ(platform_.printed, "Profile of program PROG from profile run1" + std::string(23, ' ') +
                                   " Page 1\n" + std::string(kColumns) +
                                   "PROG                 10     3        75    \n");
  EXPECT_EQ(platform_.on_terminal, "");
}

TEST_F(DriverTest, MergesProfiles) {
  EXPECT_EQ(Run({"run1", "run2"}), 0);
  EXPECT_EQ(platform_.printed, "Profile of program (unknown) from profile run1 ..." +
                                   std::string(14, ' ') + " Page 1\n" + std::string(kColumns) +
                                   "PROG                 10     4        50    \n");
}

TEST_F(DriverTest, ReadsTheDefaultProfileWithoutArguments) {
  platform_.own_port = "17";
  platform_.files["."]["ptick_17"].text = Records({"trace|PROG|10|3"});
  EXPECT_EQ(Run({}), 0);
  EXPECT_NE(platform_.printed.find(" from profile ptick_17 "), std::string::npos);
  EXPECT_NE(platform_.printed.find("PROG                 10     3        0     \n"),
            std::string::npos);
  EXPECT_TRUE(platform_.port_calls.empty());
  // Options alone do not change that.
  platform_.printed.clear();
  EXPECT_EQ(Run({"-n"}), 0);
  EXPECT_NE(platform_.printed.find(" from profile ptick_17 "), std::string::npos);
}

TEST_F(DriverTest, FitsTheReportToThePage) {
  platform_.width = 60;
  EXPECT_EQ(Run({"run1"}), 0);
  EXPECT_TRUE(
      platform_.printed.starts_with("Profile of program PROG from profile run1    Page 1\n"))
      << platform_.printed;
}

TEST_F(DriverTest, HandsTheSourceFilesToTheReport) {
  platform_.files["src"]["PROG"].text = "1\n2\n3\n4\n5\n6\n7\n8\n9\nten\n";
  EXPECT_EQ(Run({"-fsrc", "run1"}), 0);
  EXPECT_TRUE(platform_.printed.ends_with("75     ten\n")) << platform_.printed;
}

// Each row is a way of ending; the profile "bad" ends a run that comes to read it with status 2.
TEST_F(DriverTest, EndsWithAStatus) {
  const std::string usage(UsageText());
  const auto no_record = [](const std::string& name) {
    return "ptick: [202] cannot read record '" + name + "' in '.': No such file or directory\n";
  };
  struct Row {
    std::vector<std::string> arguments;
    int want;
    std::string want_terminal;
  };
  const std::vector<Row> rows = {
      {{"-a", "run1"}, 0, ""},
      {{"-h"}, 0, usage},
      {{"-h", "bad"}, 0, usage},
      {{"-x"}, 1, "Invalid argument\n" + usage},
      {{"bad", "-x"}, 1, "Invalid argument\n" + usage},
      {{"none"}, 1, no_record("none")},
      {{"dir/run1"}, 1, "ptick: [201] cannot open file 'dir': No such file or directory\n"},
      {{}, 1, no_record("ptick_0")},
      {{"-Fnone", "run1"}, 1, no_record("none")},
      {{"-Fdir/none", "bad"},
       1,
       "ptick: [201] cannot open file 'dir': No such file or directory\n"},
      {{"bad"}, 2, "Invalid format in profile file at line 3\n\tbogus\t1\n"},
      {{"none", "none"}, 2, no_record("none") + no_record("none") + "No input files...\n"},
      {{"-pv", "run1"}, 2, "Error! No 'hertz' is available in the profile output\n"},
      {{"none", "run1"}, 0, no_record("none")},
      {{"-fnone", "run1"}, 0, "ptick: [201] cannot open file 'none': No such file or directory\n"},
      {{"-fnone", "bad"},
       2,
       "ptick: [201] cannot open file 'none': No such file or directory\n"
       "Invalid format in profile file at line 3\n\tbogus\t1\n"},
      {{"-j"}, 2, "portno not set to numeric port number\n"},
      {{"-j", "", "5"}, 2, "The type should be ON or OFF\n"},
      {{"-j", "UP", "5"}, 2, "Invalid 'type' specified, should be ON or OFF\n"},
      {{"-j", "ON", "5"}, 0, ""},
      {{"-j", "OFF", "5"}, 0, ""},
      {{"-j", "ON", "9"}, 111, ""},
      {{"5", "STOP"}, 0, ""},
      {{"9", "STOP"}, 0, ""},
      {{"1-9", "STOP"}, 0, ""},
  };
  for (const Row& row : rows) {
    platform_.on_terminal.clear();
    const std::string shown = ::testing::PrintToString(row.arguments);
    EXPECT_EQ(Run(row.arguments), row.want) << shown;
    EXPECT_EQ(platform_.on_terminal, row.want_terminal) << shown;
  }
}

TEST_F(DriverTest, EndsWithTheStatusOfAFailedScript) {
  EXPECT_EQ(Run({"-kkeys", "run1"}), 0);
  EXPECT_EQ(platform_.printed, "Keyboard profile written to 'keys'\n");
  platform_.shell_status = 3;
  EXPECT_EQ(Run({"-kkeys", "run1"}), 1);
  EXPECT_EQ(platform_.shell_runs.size(), 2U);
}

// The control form comes before all else: nothing of the rest is read as options or files.
TEST_F(DriverTest, SendsControlMessagesFirst) {
  EXPECT_EQ(Run({"5", "-x", "-h", "bad"}), 0);
  EXPECT_EQ(platform_.printed, "Message sent successfully to port 5\n");
  EXPECT_EQ(platform_.on_terminal, "");
  EXPECT_EQ(platform_.port_calls, std::vector<std::string>{"send 5 TICKCTL:-x -h bad"});
  EXPECT_FALSE(LookedForFiles());
}

TEST_F(DriverTest, SendsControlMessagesToARangeFirst) {
  EXPECT_EQ(Run({"5-9"}), 0);
  EXPECT_EQ(platform_.printed, "Message sent successfully to 1 ports and failed to 4 ports\n");
  EXPECT_FALSE(LookedForFiles());
}

TEST_F(DriverTest, TakesAPortWithoutCommandsAsAProfile) {
  platform_.files["."]["5"].text = Records({"ticks|4"});
  EXPECT_EQ(Run({"5"}), 0);
  EXPECT_TRUE(platform_.printed.starts_with("Profile of program (unknown) from profile 5 "));
  EXPECT_TRUE(platform_.port_calls.empty());
}

TEST_F(DriverTest, SwitchesTheMonitorInsteadOfAnyReport) {
  EXPECT_EQ(Run({"-jAapkos", "ON", "5", "bad", "options", "-n"}), 0);
  EXPECT_EQ(platform_.port_calls, std::vector<std::string>{"on 5 [bad] [options]"});
  EXPECT_EQ(platform_.printed + platform_.on_terminal, "");
  EXPECT_FALSE(LookedForFiles());
}

TEST_F(DriverTest, ReadsAllOptionsBeforeItSwitchesTheMonitor) {
  EXPECT_EQ(Run({"-j", "ON", "5", "-x"}), 1);
  EXPECT_EQ(Run({"-j", "ON", "5", "-h"}), 0);
  EXPECT_EQ(Run({"-v", "-j", "ON", "5"}), 2);
  EXPECT_TRUE(platform_.port_calls.empty());
  EXPECT_TRUE(platform_.on_terminal.ends_with("portno not set to numeric port number\n"));
}

TEST_F(DriverTest, PrintsNothingOfAReportBeforeAMalformedLine) {
  for (const std::string options : {"-n", "-A", "-a", "-p", "-o", "-s", "-kkeys", "-u"}) {
    EXPECT_EQ(Run({options, "bad"}), 2) << options;
    EXPECT_EQ(platform_.printed, "") << options;
    EXPECT_TRUE(platform_.shell_runs.empty()) << options;
  }
}

TEST_F(DriverTest, PrintsAllReportsUpToTheMissingClockRate) {
  EXPECT_EQ(Run({"-Av", "run1"}), 2);
  ASSERT_EQ(platform_.transcript.size(), 2U);
  EXPECT_EQ(platform_.transcript[0].first, Stream::kOutput);
  EXPECT_NE(platform_.printed.find("Shared object name"), std::string::npos);
  EXPECT_EQ(platform_.printed.find("PERFORMed"), std::string::npos);
  EXPECT_EQ(platform_.on_terminal, "Error! No 'hertz' is available in the profile output\n");
}

TEST_F(DriverTest, EndsWhenItCannotWrite) {
  platform_.output_error = ENOSPC;
  EXPECT_EQ(Run({"run1"}), 1);
  EXPECT_EQ(platform_.on_terminal, "ptick: cannot write: No space left on device\n");
  platform_.output_error = EPIPE;
  EXPECT_EQ(Run({"run1"}), 0);
  EXPECT_EQ(platform_.on_terminal, "ptick: cannot write: No space left on device\n");
}

// Nobody reads the message of the first; that of the second goes elsewhere.
TEST_F(DriverTest, KeepsMessageAndStatusOfAFailingRunThatNobodyReads) {
  platform_.output_error = EPIPE;
  EXPECT_EQ(Run({"-j", "ON", "9"}), 111);
  EXPECT_EQ(platform_.on_terminal, "");
  EXPECT_EQ(Run({"-Av", "run1"}), 2);
  EXPECT_EQ(platform_.on_terminal, "Error! No 'hertz' is available in the profile output\n");
}

// A failure to write counts more than the status that the run would have ended with.
TEST_F(DriverTest, EndsWithTheStatusOfAFailureToWrite) {
  platform_.output_error = ENOSPC;
  EXPECT_EQ(Run({"-j", "ON", "9"}), 1);
  EXPECT_EQ(Run({"-Av", "run1"}), 1);
}

// What was printed before goes out, and nothing can keep the message back.
TEST_F(DriverTest, EndsWithAMessageWhenMemoryRunsOut) {
  platform_.zone = [](std::int64_t) -> std::optional<std::int64_t> { throw std::bad_alloc(); };
  platform_.files["."]["run1"].text = Records({"pid|17", "starttime|1000"});
  EXPECT_EQ(Run({"-a", "run1"}), 1);
  EXPECT_NE(platform_.printed.find("17"), std::string::npos) << platform_.printed;
  EXPECT_TRUE(platform_.printed.ends_with('\n'));
  EXPECT_EQ(platform_.on_terminal, "ptick: out of memory\n");

  platform_.output_error = ENOSPC;
  EXPECT_EQ(Run({"-a", "run1"}), 1);
  EXPECT_TRUE(platform_.on_terminal.ends_with("No space left on device\nptick: out of memory\n"));
  platform_.output_error = EPIPE;
  EXPECT_EQ(Run({"-a", "run1"}), 1);
}

TEST_F(DriverTest, EndsNormallyWhereTheReaderQuits) {
  platform_.output_is_terminal = platform_.keyboard = true;
  platform_.size.rows = 4;
  platform_.files["."]["run1"].text = Records({"ticks|4", "trace|A|1|3", "trace|A|2|2"});
  platform_.keys = {'q'};
  EXPECT_EQ(Run({"run1"}), 0);
  EXPECT_TRUE(platform_.printed.ends_with("A                    1      3        75    \n"));
  EXPECT_EQ(platform_.on_terminal, "");
}

}  // namespace

}  // namespace ptick
