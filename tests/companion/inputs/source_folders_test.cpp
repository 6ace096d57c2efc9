#include "companion/inputs/source_folders.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "companion/usage_error.h"
#include "support/memory_platform.h"

namespace ptick::companion {

namespace {

TEST(SourceFolders, TakesTheFirstSourceThatCanBeRead) {
  MemoryPlatform platform;
  platform.files["one"]["A"].text = "a1\na2";
  platform.files["two/"] = {{"A", {.text = "other"}}, {"B", {.text = "b1\n"}}};
  platform.files["one"]["C"] = {.text = "lost", .fails_after = 2};
  platform.files["two/"]["C"].text = "c1\n";
  const std::vector<std::string> names = {"one", "two/"};
  const SourceFolders folders(names, platform);
  struct Row {
    std::string program;
    std::string path;
    std::string first_line;
  };
  const std::vector<Row> rows = {{"A", "one/A", "a1"}, {"B", "two/B", "b1"}, {"C", "two/C", "c1"}};
  for (const Row& row : rows) {
    const std::optional<SourceText> source = folders.Read(row.program);
    ASSERT_TRUE(source) << row.program;
    EXPECT_EQ(source->path, row.path);
    EXPECT_EQ(source->text.ReadField(1), row.first_line) << row.program;
  }
  EXPECT_EQ(folders.PathOf("B"), "two/B");
  EXPECT_FALSE(folders.Read("D"));
  EXPECT_FALSE(folders.PathOf("D"));
  EXPECT_FALSE(folders.Read("../two/B"));
  EXPECT_EQ(folders.Files().size(), 2U);
}

TEST(SourceFolders, RefusesAFolderThatIsNotThere) {
  MemoryPlatform platform;
  const std::vector<std::string> names = {"none"};
  try {
    const SourceFolders folders(names, platform);
    FAIL() << "opened";
  } catch (const UsageError& error) {
    EXPECT_STREQ(error.what(), "cannot open the source folder 'none': No such file or directory");
  }
}

}  // namespace

}  // namespace ptick::companion
