// The loader as another program uses it: problems are values, and nothing is printed.

#include "profile/profile_loader.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <vector>

#include "support/memory_platform.h"
#include "support/profiles.h"
#include "support/text_record.h"

namespace ptick {

namespace {

using testing::Records;

TEST(ProfileLoader, LoadsAProfileByItsName) {
  MemoryPlatform platform;
  platform.files["dir"]["run1"].text = Records({"ticks|5", "trace|P|1|2"});
  ProfileTables tables;
  EXPECT_FALSE(LoadProfile("dir/run1", platform, {}, tables));
  EXPECT_EQ(tables.ProfileName, "dir/run1");
  EXPECT_EQ(tables.TotalTicks.Text(), "5");
  EXPECT_EQ(testing::RowTexts(std::move(tables.Details)), "P|1|2");
}

TEST(ProfileLoader, ReadsAnOpenRecord) {
  ProfileTables tables;
  EXPECT_FALSE(
      ReadProfile(std::make_unique<testing::TextRecord>(Records({"ticks|5"}), 3), "-", {}, tables));
  EXPECT_EQ(tables.ProfileName, "-");
  EXPECT_EQ(tables.TotalTicks.Text(), "5");
}

TEST(ProfileLoader, MergesOpenRecords) {
  using testing::TextRecord;
  ProfileMerge merge;
  EXPECT_FALSE(MergeRecord(std::make_unique<TextRecord>(Records({"ticks|5"}), 3), "a", merge));
  EXPECT_FALSE(MergeRecord(std::make_unique<TextRecord>(Records({"ticks|7"})), "b", merge));
  const auto problem = MergeRecord(
      std::make_unique<TextRecord>("PROFILE:pid", 4, TextRecord::End::kFails), "c", merge);
  ASSERT_TRUE(problem);
  EXPECT_EQ(problem->name, "c");
  EXPECT_EQ(problem->error, EIO);
  EXPECT_EQ(testing::LinesOf(merge), Records({"ticks|12"}));
}

TEST(ProfileLoader, TellsWhyAProfileCannotBeLoaded) {
  MemoryPlatform platform;
  platform.files["dir"]["bad"].text = "\n" + Records({"ticks|5", "bogus|1|2"});
  platform.files["dir"]["late"] = {.text = Records({"ticks|1"}), .fails_after = 5};
  using Kind = ReadProblem::Kind;
  struct Row {
    std::string name;
    Kind kind;
    std::string directory;
    std::string record;
    int error;
    std::int64_t line;
    std::string text;
  };
  const std::vector<Row> rows = {
      {"none/run", Kind::kCannotOpenFile, "none", "run", ENOENT, 0, ""},
      {"dir/none", Kind::kCannotReadRecord, "dir", "none", ENOENT, 0, ""},
      {"dir/late", Kind::kCannotReadRecord, "dir", "late", EIO, 0, ""},
      {"dir/bad", Kind::kInvalidLine, "dir", "bad", 0, 3, "bogus\t1\t2"},
  };
  for (const Row& row : rows) {
    ProfileTables tables;
    const std::optional<ReadProblem> problem = LoadProfile(row.name, platform, {}, tables);
    ASSERT_TRUE(problem) << row.name;
    EXPECT_EQ(problem->kind, row.kind) << row.name;
    EXPECT_EQ(problem->name, row.name);
    EXPECT_EQ(problem->place.directory, row.directory) << row.name;
    EXPECT_EQ(problem->place.record, row.record) << row.name;
    EXPECT_EQ(problem->error, row.error) << row.name;
    EXPECT_EQ(problem->line, row.line) << row.name;
    EXPECT_EQ(problem->text, row.text) << row.name;
    EXPECT_EQ(platform.printed + platform.on_terminal, "");
  }
}

TEST(ProfileLoader, TellsOfEveryProfileThatAMergeLeavesOut) {
  MemoryPlatform platform;
  platform.files["."]["run1"].text = Records({"ticks|1"});
  platform.files["."]["late"] = {.text = Records({"ticks|2"}), .fails_after = 0};
  std::vector<std::string> told;
  MergedProfile merged =
      MergeProfileFiles({"none", "run1", "late", "d/x"}, platform, std::pmr::get_default_resource(),
                        [&told](const ReadProblem& problem) {
                          told.push_back(problem.name + " " + std::to_string(problem.error));
                        });
  EXPECT_EQ(told, (std::vector<std::string>{"none 2", "late 5", "d/x 2"}));
  EXPECT_EQ(merged.first_name, "run1");
  EXPECT_FALSE(merged.is_broken);
  ProfileTables tables;
  EXPECT_FALSE(ReadMergedProfile(std::move(merged), {}, tables));
  EXPECT_EQ(tables.ProfileName, "run1 ...");
  EXPECT_EQ(tables.TotalTicks.Text(), "1");
}

}  // namespace

}  // namespace ptick
