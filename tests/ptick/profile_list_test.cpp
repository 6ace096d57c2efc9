#include "ptick/profile_list.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "output/stop.h"
#include "support/memory_platform.h"
#include "support/profiles.h"

namespace ptick {

namespace {

using testing::Records;
using testing::RowTexts;

class ProfileListTest : public ::testing::Test {
 protected:
  /// Loads these profiles; what it leaves is in tables_ and platform_.
  std::optional<int> Load(std::vector<std::string> names) {
    platform_.on_terminal.clear();
    platform_.reads.clear();
    platform_.opened_files.clear();
    tables_ = {};
    RunOptions options;
    options.ProfileList = std::move(names);
    Output output(platform_, "ptick");
    try {
      LoadProfileList(options, {}, platform_, output, tables_);
    } catch (const Stop& stop) {
      return stop.status;
    }
    return std::nullopt;
  }

  std::string Total() const { return tables_.TotalTicks.Text(); }

  MemoryPlatform platform_;
  ProfileTables tables_;
};

TEST_F(ProfileListTest, ReadsOneProfileWhereverItIs) {
  platform_.files["."]["run1"].text = Records({"ticks|1"});
  platform_.files["a/b"]["c"].text = Records({"ticks|2"});
  platform_.files["/tmp"]["run1"].text = Records({"ticks|3"});
  platform_.files["/"]["run1"].text = Records({"ticks|4"});
  struct Row {
    std::string_view name;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {"run1", "1"}, {"./run1", "1"}, {"a/b/c", "2"}, {"/tmp/run1", "3"}, {"/run1", "4"}};
  for (const Row& row : rows) {
    EXPECT_EQ(Load({std::string(row.name)}), std::nullopt) << row.name;
    EXPECT_EQ(Total(), row.want) << row.name;
    EXPECT_EQ(tables_.ProfileName, row.name);
    EXPECT_EQ(platform_.on_terminal, "");
    EXPECT_EQ(platform_.reads.size(), 1U);
  }
}

TEST_F(ProfileListTest, ReadsTheDefaultProfileOfTheOwnPort) {
  for (const std::string_view port : {"0", "7", "007", "123"}) {
    platform_.own_port = port;
    const std::string name = "ptick_" + std::string(port);
    platform_.files["."] = {{name, {.text = Records({"ticks|5"})}}};
    EXPECT_EQ(Load({}), std::nullopt) << port;
    EXPECT_EQ(Total(), "5") << port;
    EXPECT_EQ(tables_.ProfileName, name);
    platform_.files["."].clear();
    EXPECT_EQ(Load({}), 1) << port;
    EXPECT_EQ(platform_.on_terminal,
              "ptick: [202] cannot read record '" + name + "' in '.': No such file or directory\n");
  }
}

TEST_F(ProfileListTest, StopsWhereTheOnlyProfileCannotBeRead) {
  platform_.files["."]["run1"].text = Records({"ticks|1"});
  platform_.files["run1"] = {};
  platform_.files["."]["broken"] = {.text = Records({"ticks|1"}), .fails_after = 5};
  platform_.files["."]["late"] = {.text = Records({"ticks|1", "ticks|2"}), .fails_after = 20};
  struct Row {
    std::string_view name;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {"none", "ptick: [202] cannot read record 'none' in '.': No such file or directory\n"},
      {"dir/run1", "ptick: [201] cannot open file 'dir': No such file or directory\n"},
      {"/a/b/run1", "ptick: [201] cannot open file '/a/b': No such file or directory\n"},
      {"/run1", "ptick: [201] cannot open file '/': No such file or directory\n"},
      {"run1/", "ptick: [202] cannot read record '' in 'run1': No such file or directory\n"},
      {"", "ptick: [202] cannot read record '' in '.': No such file or directory\n"},
      {"./none", "ptick: [202] cannot read record 'none' in '.': No such file or directory\n"},
      {"broken", "ptick: [202] cannot read record 'broken' in '.': Input/output error\n"},
      {"late", "ptick: [202] cannot read record 'late' in '.': Input/output error\n"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Load({std::string(row.name)}), 1) << row.name;
    EXPECT_EQ(platform_.on_terminal, row.want) << row.name;
    EXPECT_EQ(platform_.printed, "");
  }
}

TEST_F(ProfileListTest, HandsTheOnlyProfileToTheParserAsItIs) {
  platform_.files["."]["run1"].text = "\n# a comment\n\t\tPROFILE:TICKS\t\t5\n" +
                                      Records({"program|P", "pid|7", "trace|P|1|2", "trace|P|1|2",
                                               "startclock|9", "startclock|8", "hertz"});
  EXPECT_EQ(Load({"run1"}), std::nullopt);
  EXPECT_EQ(Total(), "5");
  EXPECT_EQ(tables_.ProgramName, "P");
  EXPECT_EQ(tables_.Pid.Text(), "7");
  EXPECT_EQ(tables_.StartClock.Text(), "8");
  EXPECT_EQ(RowTexts(std::move(tables_.Details)), "P|1|2 P|1|2");
}

TEST_F(ProfileListTest, TakesAProfileOfNothing) {
  for (const std::string_view text : {"", "\n", "no profile\n", "PROFILE:ticks\n"}) {
    platform_.files["."]["run1"].text = text;
    EXPECT_EQ(Load({"run1"}), std::nullopt) << text;
    EXPECT_EQ(platform_.on_terminal, "") << text;
    EXPECT_EQ(tables_.ProfileName, "run1");
  }
}

TEST_F(ProfileListTest, StopsAtAMalformedLine) {
  platform_.files["."]["run1"].text = "\n" + Records({"ticks|5", "bogus|1"});
  EXPECT_EQ(Load({"run1"}), 2);
  EXPECT_EQ(platform_.on_terminal, "Invalid format in profile file at line 3\n\tbogus\t1\n");
}

TEST_F(ProfileListTest, MergesTwoProfiles) {
  platform_.files["."]["run1"].text =
      Records({"program|P", "pid|7", "ppid|6", "typerate|1|2", "resource|1|2", "startclock|100",
               "endclock|500", "hertz|100", "ticks|10", "trace|P|10|3", "input|13|1|1|2|a",
               "portno|4", "user_ticks|3|5", "perform|ticks|1|cmd|LIST", "shared_object|lib|1"});
  platform_.files["dir"]["run2"].text =
      Records({"startclock|90", "endclock|700", "hertz|50", "ticks|5", "trace|P|10|4",
               "trace|Q|1|1", "portno|4", "user_ticks|3|7", "perform|ticks|1|cmd|LIST",
               "perform|ticks|2|cmd|WHO", "shared_object|lib|1"});
  EXPECT_EQ(Load({"run1", "dir/run2"}), std::nullopt);
  EXPECT_EQ(tables_.ProfileName, "run1 ...");
  EXPECT_EQ(tables_.ProgramName, "(unknown)");
  EXPECT_EQ(tables_.ProgramCommand, "");
  EXPECT_EQ(tables_.Pid.Text() + " " + tables_.PPid.Text(), "-1 -1");
  EXPECT_FALSE(tables_.TypeRate);
  EXPECT_EQ(tables_.Resource, "");
  EXPECT_EQ(tables_.StartClock.Text() + " " + tables_.EndClock.Text(), "90 700");
  EXPECT_EQ(tables_.Hertz.Text(), "50");
  EXPECT_EQ(Total(), "15");
  EXPECT_EQ(RowTexts(std::move(tables_.Details)), "P|10|7 Q|1|1");
  EXPECT_EQ(tables_.InputCount.Text(), "0");
  EXPECT_EQ(tables_.PortNo.Text(), "8");
  EXPECT_EQ(tables_.UserTicks.at(2).Text(), "12");
  const PerformTable& performs = tables_.Performs;
  ASSERT_EQ(performs.Commands().size(), 2U);
  EXPECT_EQ(performs.Commands()[0], "0");
  EXPECT_EQ(performs.Commands()[1], "WHO");
  EXPECT_EQ(testing::Texts(tables_.SharedObjects), std::vector<std::string>{"lib"});
}

TEST_F(ProfileListTest, MergesAProfileWithItself) {
  platform_.files["."]["run1"].text =
      Records({"startclock|100", "endclock|500", "hertz|100", "ticks|10", "trace|P|10|3"});
  EXPECT_EQ(Load({"run1", "run1", "run1"}), std::nullopt);
  EXPECT_EQ(tables_.ProfileName, "run1 ...");
  EXPECT_EQ(Total(), "30");
  EXPECT_EQ(RowTexts(std::move(tables_.Details)), "P|10|9");
  EXPECT_EQ(tables_.StartClock.Text() + " " + tables_.EndClock.Text(), "100 500");
  EXPECT_EQ(tables_.Hertz.Text(), "100");
  EXPECT_EQ(platform_.reads.size(), 3U);
}

TEST_F(ProfileListTest, PassesOverWhatCannotBeReadInAMerge) {
  platform_.files["."]["run1"].text = Records({"ticks|1"});
  platform_.files["."]["run2"].text = Records({"ticks|2"});
  platform_.files["."]["empty"].text = "nothing of use\n";
  platform_.files["."]["broken"] = {.text = Records({"ticks|4"}), .fails_after = 0};
  platform_.files["d"]["run3"].text = Records({"ticks|8"});
  const std::string no_file = "ptick: [201] cannot open file 'dir': No such file or directory\n";
  const std::string no_record =
      "ptick: [202] cannot read record 'none' in '.': No such file or directory\n";
  struct Row {
    std::vector<std::string> names;
    std::string_view want_total;
    std::string_view want_name;
    std::string want_terminal;
  };
  const std::vector<Row> rows = {
      {{"run1", "run2"}, "3", "run1 ...", ""},
      {{"dir/run1", "run2"}, "2", "run2 ...", no_file},
      {{"none", "run2"}, "2", "run2 ...", no_record},
      {{"run1", "none"}, "1", "run1 ...", no_record},
      {{"none", "dir/none", "d/run3", "run1"}, "9", "d/run3 ...", no_record + no_file},
      {{"run1", "none", "run2", "dir/x"}, "3", "run1 ...", no_record + no_file},
      {{"broken", "run2"},
       "2",
       "run2 ...",
       "ptick: [202] cannot read record 'broken' in '.': Input/output error\n"},
      {{"", "run2"},
       "2",
       "run2 ...",
       "ptick: [202] cannot read record '' in '.': No such file or directory\n"},
      // A profile without a usable line has been read.
      {{"empty", "run2"}, "2", "empty ...", ""},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Load(row.names), std::nullopt) << row.names.front();
    EXPECT_EQ(Total(), row.want_total) << row.names.front();
    EXPECT_EQ(tables_.ProfileName, row.want_name);
    EXPECT_EQ(platform_.on_terminal, row.want_terminal);
  }
}

TEST_F(ProfileListTest, StopsWhereNothingWasMerged) {
  platform_.files["."]["empty"].text = "";
  platform_.files["."]["dropped"].text = Records({"program|P", "pid|5", "ticks"});
  struct Row {
    std::vector<std::string> names;
    std::string want_terminal;
  };
  const std::vector<Row> rows = {
      {{"none", "dir/run1"},
       "ptick: [202] cannot read record 'none' in '.': No such file or directory\nptick: [201] "
       "cannot open file 'dir': No such file or directory\n"},
      {{"empty", "empty"}, ""},
      {{"dropped", "empty"}, ""},
      {{"dropped", "none"},
       "ptick: [202] cannot read record 'none' in '.': No such file or directory\n"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Load(row.names), 2) << row.names.front();
    EXPECT_EQ(platform_.on_terminal, row.want_terminal + "No input files...\n");
    EXPECT_EQ(platform_.printed, "");
  }
}

TEST_F(ProfileListTest, CountsTheMergedLines) {
  platform_.files["."]["run1"].text =
      "\n\n# a comment\n" + Records({"ticks|1", "trace|P|1|1", "pid|5", "bogus|a|1"});
  EXPECT_EQ(Load({"run1", "run1"}), 2);
  EXPECT_EQ(platform_.on_terminal, "Invalid format in profile file at line 3\n\tbogus\ta\t2\n");
}

TEST_F(ProfileListTest, TakesAProfileWholeOrNotAtAllInAMerge) {
  platform_.block_size = 8;
  platform_.files["."]["run1"].text = Records({"ticks|1"});
  platform_.files["."]["broken"] = {.text = Records({"ticks|4", "ticks|5"}), .fails_after = 30};
  platform_.files["."]["run2"].text = Records({"ticks|16"});
  const std::string message =
      "ptick: [202] cannot read record 'broken' in '.': Input/output error\n";
  const std::string no_record =
      "ptick: [202] cannot read record 'none' in '.': No such file or directory\n";
  struct Row {
    std::vector<std::string> names;
    std::string_view want_total;
    std::string_view want_name;
    std::string want_terminal;
  };
  const std::vector<Row> rows = {
      {{"run1", "broken", "run2"}, "17", "run1 ...", message},
      {{"broken", "run1"}, "1", "run1 ...", message},
      {{"run1", "none", "broken", "run2"}, "17", "run1 ...", no_record + message},
      {{"broken", "run1", "broken", "none"}, "1", "run1 ...", message + message + no_record},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Load(row.names), std::nullopt) << row.names.front();
    EXPECT_EQ(Total(), row.want_total) << row.names.front();
    EXPECT_EQ(tables_.ProfileName, row.want_name);
    EXPECT_EQ(platform_.on_terminal, row.want_terminal);
  }
}

TEST_F(ProfileListTest, StopsWhereAMergeWouldHaveToReadAPipeAgain) {
  platform_.block_size = 8;
  platform_.files["."]["pipe"] = {.text = Records({"ticks|1"}), .is_pipe = true};
  platform_.files["."]["broken"] = {.text = Records({"ticks|4", "ticks|5"}), .fails_after = 30};
  platform_.files["."]["at_once"] = {.text = Records({"ticks|4"}), .fails_after = 0};
  EXPECT_EQ(Load({"pipe", "broken", "none"}), 1);
  EXPECT_EQ(platform_.on_terminal,
            "ptick: [202] cannot read record 'broken' in '.': Input/output error\n");
  // Nothing of these has been merged, or the pipe has not been read yet.
  for (const std::vector<std::string>& names :
       {std::vector<std::string>{"pipe", "at_once"}, {"broken", "pipe"}}) {
    EXPECT_EQ(Load(names), std::nullopt);
    EXPECT_EQ(Total(), "1");
  }
}

}  // namespace

}  // namespace ptick
