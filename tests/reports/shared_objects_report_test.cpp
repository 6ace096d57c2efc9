#include "reports/shared_objects_report.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "support/report_run.h"

namespace ptick {

namespace {

class SharedObjectsReportTest : public ReportTest {
 protected:
  std::string Report() { return Run(ReportSharedObjects).lines; }
};

const std::string kPlainHeading = "Shared objecs used by program PROG from profile run1" +
                                  std::string(12, ' ') +
                                  " Page 1\n"
                                  "Shared object name\n";
const std::string kSizesTitle = "Shared object name" + std::string(42, ' ') + " Sizes\n";

TEST_F(SharedObjectsReportTest, ListsNamesInByteOrder) {
  tables_.SharedObjects = Names({"b", "B", "a", "\xff", "10", "9", "ab", "a b", "_"});
  EXPECT_EQ(Report(), kPlainHeading + "10\n9\nB\n_\na\na b\nab\nb\n\xff\n");
}

TEST_F(SharedObjectsReportTest, ListsDuplicatesNextToEachOther) {
  tables_.SharedObjects = Names({"x.so", "a.so", "x.so"});
  EXPECT_EQ(Report(), kPlainHeading + "a.so\nx.so\nx.so\n");
}

TEST_F(SharedObjectsReportTest, PrintsJustTheHeadingWithoutObjects) {
  EXPECT_EQ(Report(), kPlainHeading);
}

TEST_F(SharedObjectsReportTest, PrintsJustTheTitlesWithoutObjectsAmongAllReports) {
  options_.AllReports = true;
  EXPECT_EQ(Report(), "\nShared object name\n------ ------ ----\n");
}

TEST_F(SharedObjectsReportTest, LaysOutEveryName) {
  struct Row {
    std::string name;
    std::string want;
  };
  const std::vector<Row> rows = {
      {std::string(59, 'n'), std::string(59, 'n')},
      {std::string(60, 'n'), std::string(60, 'n')},
      {std::string(61, 'n'), std::string(60, 'n')},
      {std::string(59, 'n') + " n", std::string(59, 'n')},  // the cut leaves a blank at the end
      {"name  ", "name"},
      {"  name", "  name"},
      {"name\t", "name\t"},
      {"", ""},
      {"   ", ""},
      {"\xff\xfd\x01", "\xff\xfd\x01"},
  };
  options_.AllReports = true;
  for (const Row& row : rows) {
    tables_.SharedObjects = Names({row.name});
    EXPECT_EQ(Report(), "\nShared object name\n------ ------ ----\n" + row.want + "\n") << row.name;
  }
}

TEST_F(SharedObjectsReportTest, RunsNothingUnlessVerbose) {
  tables_.SharedObjects = Names({"a.so"});
  Report();
  EXPECT_TRUE(platform_.commands_run.empty());
}

TEST_F(SharedObjectsReportTest, ShowsSizesWhenVerbose) {
  options_.Verbose = true;
  tables_.SharedObjects = Names({"b.so", "a.so", std::string(70, 'n')});
  platform_.command_outputs["size a.so"] = "   text    data     bss  ";
  platform_.command_outputs["size " + std::string(70, 'n')] = "size: no such file";
  EXPECT_EQ(Report(), "Shared objecs used by program PROG from profile run1" +
                          std::string(12, ' ') + " Page 1\n" + kSizesTitle + "a.so" +
                          std::string(56, ' ') + "    text    data     bss\n" +
                          "b.so\n" +  // no answer: nothing but blanks after the name
                          std::string(60, 'n') + " size: no such file\n");
}

TEST_F(SharedObjectsReportTest, HasSizesTitlesAmongAllReports) {
  options_.Verbose = true;
  options_.AllReports = true;
  EXPECT_EQ(Report(),
            "\n" + kSizesTitle + "------ ------ ----" + std::string(42, ' ') + " -----\n");
}

TEST_F(SharedObjectsReportTest, SplitsTheCommandAtBlanksOnly) {
  struct Row {
    std::string_view name;
    std::vector<std::string> want;
  };
  const std::vector<Row> rows = {
      {"lib.so", {"size", "lib.so"}},
      {"x; rm y", {"size", "x;", "rm", "y"}},
      {"$(id) `id` >f", {"size", "$(id)", "`id`", ">f"}},
      {"  two   words  ", {"size", "two", "words"}},
      {"", {"size"}},
      {"   ", {"size"}},
      {"tab\there", {"size", "tab\there"}},
      {"\xff", {"size", "\xff"}},
      {"@list", {"size", "./@list"}},
      {"-A", {"size", "./-A"}},
      {"--help", {"size", "./--help"}},
      {"@", {"size", "./@"}},
      {"-", {"size", "./-"}},
      {"a -b @/etc/passwd c@d -", {"size", "a", "./-b", "./@/etc/passwd", "c@d", "./-"}},
      {" -x", {"size", "./-x"}},
  };
  options_.Verbose = true;
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    MemoryPlatform platform;
    Output output(platform, "ptick");
    tables_.SharedObjects = Names({row.name});
    ReportSharedObjects({tables_, options_, platform, output});
    ASSERT_EQ(platform.commands_run.size(), 1U);
    EXPECT_EQ(platform.commands_run[0], row.want);
  }
}

TEST_F(SharedObjectsReportTest, AsksOnceForEqualNamesNextToEachOther) {
  options_.Verbose = true;
  tables_.SharedObjects = Names({"x", "a", "x", "x"});
  platform_.command_outputs["size x"] = "X";
  platform_.command_outputs["size a"] = "A";
  const std::string blanks(60, ' ');
  EXPECT_EQ(Report(), "Shared objecs used by program PROG from profile run1" +
                          std::string(12, ' ') + " Page 1\n" + kSizesTitle + "a" + blanks + "A\n" +
                          "x" + blanks + "X\nx" + blanks + "X\nx" + blanks + "X\n");
  EXPECT_EQ(platform_.commands_run,
            (std::vector<std::vector<std::string>>{{"size", "a"}, {"size", "x"}}));
}

// More names than are asked for at a time, so that the batches must join without a gap.
TEST_F(SharedObjectsReportTest, ShowsEverySizeOfManyNames) {
  constexpr int kNames = 1000;
  options_.Verbose = true;
  options_.AllReports = true;
  std::string want = "\n" + kSizesTitle + "------ ------ ----" + std::string(42, ' ') + " -----\n";
  std::vector<std::vector<std::string>> commands;
  for (int n = 0; n < kNames; ++n) {
    const std::string name = "lib" + std::to_string(kNames + n);
    const std::string size = "size " + std::to_string(n);
    platform_.command_outputs["size " + name] = size + "\nmore\n";
    for (int copy = 0; copy < n % 4; ++copy) {
      tables_.SharedObjects.Append(name);
      want += name;
      want += std::string(53, ' ') + " " + size + "\n";
    }
    if (n % 4 != 0) {
      commands.push_back({"size", name});
    }
  }
  EXPECT_EQ(Report(), want);
  EXPECT_EQ(platform_.commands_run, commands) << "every name once";
}

TEST_F(SharedObjectsReportTest, TellsOnceThatSizesAreMissing) {
  options_.Verbose = true;
  options_.AllReports = true;
  std::string want = "\n" + kSizesTitle + "------ ------ ----" + std::string(42, ' ') + " -----\n";
  for (int n = 1000; n < 2000; ++n) {
    const std::string name = "lib" + std::to_string(n);
    tables_.SharedObjects.Append(name);
    if (n % 2 == 0) {
      platform_.command_errors["size " + name] = n == 1000 ? ENOMEM : EAGAIN;
    }
    want += name + "\n";
  }
  int status = 0;
  const Printed printed = Run([&](const ReportJob& job) {
    ReportSharedObjects(job);
    status = job.output.EndStatus();
  });
  EXPECT_EQ(printed.terminal, "ptick: cannot run size: Cannot allocate memory\n");
  EXPECT_EQ(printed.lines, want);
  EXPECT_EQ(printed.stopped, std::nullopt);
  EXPECT_EQ(status, 1);
}

}  // namespace

}  // namespace ptick
