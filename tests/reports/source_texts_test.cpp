#include "reports/source_texts.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/memory_platform.h"

namespace ptick {

namespace {

struct Entry {
  std::string_view program;
  std::string_view line;
};

class SourceTextsTest : public ::testing::Test {
 protected:
  /// Source files that hold these records, in this order.
  void OpenFiles(std::initializer_list<MemoryPlatform::Directory> files) {
    files_.clear();
    for (const MemoryPlatform::Directory& records : files) {
      const std::string name = "file " + std::to_string(files_.size());
      platform_.files[name] = records;
      files_.push_back({name, platform_.OpenFile(name)});
    }
  }

  /// The text of every entry, in their order.
  std::vector<std::string> Texts(const std::vector<Entry>& entries, std::int64_t width = 35,
                                 bool per_program = false) {
    TickTable table;
    std::size_t ticks = entries.size();
    for (const Entry& entry : entries) {
      table.Add(entry.program, entry.line, std::to_string(ticks--));
    }
    const OrderedTicks ordered(std::move(table), SortOrder::kDescending, per_program);
    platform_.reads.clear();
    const SourceTexts sources(ordered, files_, width);
    std::vector<std::string> texts;
    for (std::size_t row = 0; row < ordered.RowCount(); ++row) {
      ordered.ForEach(row,
                      [&](const TickEntry& entry) { texts.emplace_back(sources.TextOf(entry)); });
    }
    return texts;
  }

  std::string Text(std::string_view program, std::string_view line, std::int64_t width = 35) {
    return Texts({{program, line}}, width).front();
  }

  MemoryPlatform platform_;
  std::vector<SourceFile> files_;
};

TEST_F(SourceTextsTest, AreCleanedAndFitted) {
  OpenFiles({{{"PROG", {.text = "\t IF  X\t THEN Y  \nlast\n"}}}});
  EXPECT_EQ(Text("PROG", "1"), "IF X THEN Y");
  EXPECT_EQ(Text("PROG", "1", 5), "IF X");
  EXPECT_EQ(Text("PROG", "2", 2), "la");
  EXPECT_EQ(Text("PROG", "2", 0), "");
}

TEST_F(SourceTextsTest, AreQuestionMarksWhereNoFileHasTheLine) {
  OpenFiles({{{"PROG", {.text = "one\n"}}}});
  EXPECT_EQ(Text("PROG", "2"), "??");
  EXPECT_EQ(Text("NONE", "1"), "??");
  EXPECT_EQ(Text("NONE", "1", 1), "?");
  EXPECT_EQ(Text("NONE", "1", 0), "");
  EXPECT_EQ(Text("NONE", "1", -7), "");
}

TEST_F(SourceTextsTest, KnowLinesByNumbersInDigits) {
  OpenFiles({{{"PROG", {.text = "one\ntwo\nthree\n"}}}});
  struct Row {
    std::string_view line;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {"1", "one"},
      {"3", "three"},
      {"003", "three"},
      {"0", "??"},
      {"4", "??"},
      {"", "??"},
      {"x", "??"},
      {"-1", "??"},
      {"+1", "??"},
      {"1.0", "??"},
      {" 1", "??"},
      {"1 ", "??"},
      {"1x", "??"},
      {"1\r", "??"},
      {"2147483647", "??"},
      {"2147483648", "??"},
      {"4294967295", "??"},
      {"4294967297", "??"},
      {"18446744073709551617", "??"},
      {"99999999999999999999999", "??"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Text("PROG", row.line), row.want) << row.line;
  }
}

// Entries in the order of their ticks, of several programs, some of them twice; by program too.
TEST_F(SourceTextsTest, AreThoseOfEveryEntry) {
  OpenFiles({{{"A", {.text = "a1\na2\n"}}, {"C", {.text = "c1\n"}}},
             {{"A", {.text = "x\nx\na3\n"}}, {"B", {.text = "b1\n\nb3\n"}}}});
  const std::vector<Entry> entries = {{"B", "3"},  {"A", "3"}, {"A", "1"},   {"NONE", "1"},
                                      {"A", "03"}, {"B", "2"}, {"A", "1"},   {"A", "9"},
                                      {"C", "x"},  {"C", "1"}, {"NONE", ""}, {"A", "2"}};
  EXPECT_EQ(Texts(entries), (std::vector<std::string>{"b3", "a3", "a1", "??", "a3", "", "a1", "??",
                                                      "??", "c1", "??", "a2"}));
  EXPECT_EQ(Texts(entries, 35, true),
            (std::vector<std::string>{"b3", "", "a3", "a1", "a3", "a1", "??", "a2", "??", "??",
                                      "??", "c1"}));
  EXPECT_EQ(Texts({}), std::vector<std::string>());
}

TEST_F(SourceTextsTest, ReadARecordOnceAndOnlyWhereALineIsWanted) {
  OpenFiles({{{"A", {.text = "a1\na2\na3\n"}}},
             {{"A", {.text = "a1\n"}}, {"B", {.text = "b\n"}}, {"UNSHOWN", {.text = "u\n"}}}});
  Texts({{"A", "1"}, {"B", "1"}, {"A", "3"}, {"NONE", "1"}, {"A", "1"}, {"C", "x"}, {"C", "0"}});
  using Reads = std::vector<std::pair<std::string, std::string>>;
  EXPECT_EQ(platform_.reads, (Reads{{"file 0", "A"},
                                    {"file 0", "B"},
                                    {"file 1", "B"},
                                    {"file 0", "NONE"},
                                    {"file 1", "NONE"}}));
}

TEST_F(SourceTextsTest, PassOverWhatIsNoRegularFileAndWhatCannotBeReadToItsEnd) {
  OpenFiles({{{"A", {.text = "piped\n", .is_pipe = true}}},
             {{"A", {.text = "a1\na2\n", .fails_after = 5}}},
             {{"A", {.text = "whole\n"}}}});
  EXPECT_EQ(Texts({{"A", "1"}, {"A", "2"}}), (std::vector<std::string>{"whole", "??"}));
}

TEST_F(SourceTextsTest, AreEmptyWithoutFiles) {
  OpenFiles({});
  EXPECT_EQ(Text("A", "1"), "??");
}

}  // namespace

}  // namespace ptick
