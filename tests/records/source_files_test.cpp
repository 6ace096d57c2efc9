#include "records/source_files.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "support/line_texts.h"
#include "support/memory_platform.h"

namespace ptick {

namespace {

using testing::LineTexts;

using Lines = std::vector<std::uint32_t>;
using Texts = std::vector<std::string>;

class SourceFinderTest : public ::testing::Test {
 protected:
  /// Adds a source file after those there are.
  MemoryPlatform::Directory& AddFile(const std::string& name) {
    platform_.files[name] = {};
    files_.push_back({name, platform_.OpenFile(name)});
    return platform_.files[name];
  }

  Texts Find(std::string_view program, const Lines& lines) {
    LineTexts sink;
    const std::size_t found = SourceFinder(files_).Find(program, lines, sink);
    EXPECT_EQ(found, sink.texts.size());
    return sink.texts;
  }

  MemoryPlatform platform_;
  std::vector<SourceFile> files_;
};

TEST_F(SourceFinderTest, TakesEachLineFromTheFirstFileThatHasIt) {
  AddFile("first")["OTHER"].text = "x\n";
  AddFile("second")["PROG"].text = "second 1\nsecond 2\n";
  MemoryPlatform::Directory& third = AddFile("third");
  third["PROG"].text = "third 1\nthird 2\n\nthird 4\n";
  third["LATE"].text = "late\n";
  struct Row {
    std::string_view program;
    Lines lines;
    Texts want;
  };
  const std::vector<Row> rows = {
      {"PROG", {1, 2, 3, 4, 5}, {"second 1", "second 2", "", "third 4"}},
      {"PROG", {2, 4}, {"second 2", "third 4"}},
      {"PROG", {3}, {""}},
      {"PROG", {5}, {}},
      {"OTHER", {1, 2}, {"x"}},
      {"LATE", {1}, {"late"}},
      {"NONE", {1}, {}},
      {"prog", {1}, {}},
      {"", {1}, {}},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Find(row.program, row.lines), row.want) << row.program;
  }
}

TEST_F(SourceFinderTest, OpensARecordOnlyForALineThatNoFileBeforeHad) {
  AddFile("first")["A"].text = "1\n2\n";
  AddFile("second")["A"].text = "1\n2\n3\n";
  AddFile("third")["A"].text = "1\n2\n3\n4\n";
  using Reads = std::vector<std::pair<std::string, std::string>>;
  struct Row {
    std::string program;
    Lines lines;
    Reads want;
  };
  const std::vector<Row> rows = {
      {"A", {}, {}},
      {"A", {1, 2}, {{"first", "A"}}},
      {"A", {1, 3}, {{"first", "A"}, {"second", "A"}}},
      {"A", {4, 5}, {{"first", "A"}, {"second", "A"}, {"third", "A"}}},
      {"B", {1}, {{"first", "B"}, {"second", "B"}, {"third", "B"}}},
  };
  for (const Row& row : rows) {
    platform_.reads.clear();
    Find(row.program, row.lines);
    EXPECT_EQ(platform_.reads, row.want) << row.program;
  }
}

TEST_F(SourceFinderTest, PassesOverARecordThatCannotBeReadToItsEnd) {
  AddFile("first")["A"] = {.text = "broken 1\nbroken 2\n", .fails_after = 12};
  EXPECT_EQ(Find("A", {1, 2}), Texts());
  AddFile("second")["A"].text = "one\n";
  EXPECT_EQ(Find("A", {1, 2}), Texts{"one"});
  AddFile("third")["A"] = {.text = "1\n2\n3\n", .fails_after = 6};
  AddFile("fourth")["A"].text = "1\n2\n3\n";
  EXPECT_EQ(Find("A", {1, 2, 3, 4}), (Texts{"one", "2", "3"}));
}

TEST_F(SourceFinderTest, TakesNothingFromAPipe) {
  AddFile("first")["A"] = {.text = "piped\n", .is_pipe = true};
  AddFile("second")["A"].text = "one\n";
  EXPECT_EQ(Find("A", {1}), Texts{"one"});
}

}  // namespace

}  // namespace ptick
