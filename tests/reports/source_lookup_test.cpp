#include "reports/source_lookup.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/text_record.h"

namespace ptick {
namespace {

using testing::TextRecord;

using Records = std::map<std::string, std::string, std::less<>>;

/// A source file in memory. It notes every record that is opened.
class MemoryFile final : public RecordFile {
 public:
  MemoryFile(Records records, std::vector<std::string>& opened)
      : records_(std::move(records)), opened_(opened) {}

  std::unique_ptr<RecordReader> OpenRecord(std::string_view name, int* /*error*/) override {
    opened_.emplace_back(name);
    const auto record = records_.find(name);
    if (record == records_.end()) {
      return nullptr;
    }
    const auto end =
        record->second == "broken" ? TextRecord::End::kFails : TextRecord::End::kReached;
    return std::make_unique<TextRecord>(record->second, 100, end);
  }

 private:
  Records records_;
  std::vector<std::string>& opened_;
};

class SourceLookupTest : public ::testing::Test {
 protected:
  /// Source files that hold these records, in this order.
  void OpenFiles(std::initializer_list<Records> files) {
    files_.clear();
    for (const Records& records : files) {
      files_.push_back({"file", std::make_unique<MemoryFile>(records, opened_)});
    }
  }

  std::string Fetch(std::string_view name, std::string_view line, std::int64_t width = 35) {
    return SourceLookup(files_, Mask::Left(width)).FetchSourceLine(name, line);
  }

  std::vector<SourceFile> files_;
  std::vector<std::string> opened_;
};

TEST_F(SourceLookupTest, CleansTheLine) {
  struct Row {
    std::string_view source;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {"IF X THEN\t\tY", "IF X THEN Y"},
      {"     A  =  1", "A = 1"},
      {"A = 1   ", "A = 1"},
      {"\t \tA\t=\t1\t", "A = 1"},
      {"PRINT 'a   b'", "PRINT 'a b'"},
      {"", ""},
      {"   \t ", ""},
      {"A = 1\r", "A = 1\r"},
      {"A\xfd"
       "B\xfc"
       "C\x01",
       "A\xfd"
       "B\xfc"
       "C\x01"},
      {"??", "??"},
  };
  for (const Row& row : rows) {
    OpenFiles({{{"PROG", std::string(row.source) + "\nlast\n"}}});
    EXPECT_EQ(Fetch("PROG", "1"), row.want) << row.source;
  }
}

TEST_F(SourceLookupTest, FitsTheLineToItsColumn) {
  struct Row {
    std::string source;
    std::int64_t width;
    std::string want;
  };
  const std::vector<Row> rows = {
      {std::string(50, 'x'), 35, std::string(35, 'x')},
      {std::string(35, 'x'), 35, std::string(35, 'x')},
      {std::string(34, 'x'), 35, std::string(34, 'x')},
      {std::string(100, 'x'), 87, std::string(87, 'x')},
      {"short", 35, "short"},
      {"ab cd", 3, "ab"},  // the blank that the cut leaves at the end goes, too
      {"ab cd", 4, "ab c"},
      {"ab", 1, "a"},
      {"ab", 0, ""},
      {"ab", -5, ""},
      {"   ab", 2, "ab"},  // cleaned first, then cut
  };
  for (const Row& row : rows) {
    OpenFiles({{{"PROG", row.source}}});
    EXPECT_EQ(Fetch("PROG", "1", row.width), row.want) << row.source << " in " << row.width;
  }
}

TEST_F(SourceLookupTest, TakesTheFirstFileThatHasTheLine) {
  OpenFiles({{{"OTHER", "x\n"}},
             {{"PROG", "second 1\nsecond 2\n"}},
             {{"PROG", "third 1\nthird 2\n\nthird 4\n"}, {"LATE", "late\n"}}});
  struct Row {
    std::string_view name;
    std::string_view line;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {"PROG", "1", "second 1"}, {"PROG", "2", "second 2"}, {"PROG", "3", ""},
      {"PROG", "4", "third 4"},  {"PROG", "5", "??"},       {"OTHER", "1", "x"},
      {"OTHER", "2", "??"},      {"LATE", "1", "late"},     {"NONE", "1", "??"},
      {"prog", "1", "??"},       {"PROG ", "1", "??"},      {"", "1", "??"},
  };
  SourceLookup lookup(files_, Mask::Left(35));
  for (int pass = 1; pass <= 2; ++pass) {
    for (const Row& row : rows) {
      EXPECT_EQ(lookup.FetchSourceLine(row.name, row.line), row.want)
          << row.name << " " << row.line << " in pass " << pass;
    }
  }
}

// An empty line has been read: it is empty, and later files are not looked at.
TEST_F(SourceLookupTest, FindsEmptyLines) {
  OpenFiles({{{"PROG", "one\n\nthree\n"}}, {{"PROG", "1\n2\n3\n"}}});
  EXPECT_EQ(Fetch("PROG", "2"), "");
}

TEST_F(SourceLookupTest, KnowsLinesByNumbersInDigits) {
  OpenFiles({{{"PROG", "one\ntwo\nthree\n"}}});
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
      {"18446744073709551617", "??"},
      {"99999999999999999999999", "??"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Fetch("PROG", row.line), row.want) << row.line;
  }
}

TEST_F(SourceLookupTest, TakesLineNumbers) {
  OpenFiles({{{"PROG", "one\ntwo\n"}}});
  SourceLookup lookup(files_, Mask::Left(35));
  EXPECT_EQ(lookup.FetchSourceLine("PROG", std::size_t{2}), "two");
  EXPECT_EQ(lookup.FetchSourceLine("PROG", std::size_t{0}), "??");
  EXPECT_EQ(lookup.FetchSourceLine("PROG", std::size_t{3}), "??");
}

TEST_F(SourceLookupTest, PassesOverARecordThatCannotBeReadToItsEnd) {
  OpenFiles({{{"PROG", "broken"}}, {{"PROG", "whole\n"}}});
  EXPECT_EQ(Fetch("PROG", "1"), "whole");
  OpenFiles({{{"PROG", "broken"}}});
  EXPECT_EQ(Fetch("PROG", "1"), "??");
}

TEST_F(SourceLookupTest, ReadsARecordOnceAndOnlyWhereItLooks) {
  OpenFiles({{{"A", "a\n"}}, {{"A", "a\n"}, {"B", "b\n"}}});
  SourceLookup lookup(files_, Mask::Left(35));
  for (int pass = 1; pass <= 3; ++pass) {
    lookup.FetchSourceLine("A", "1");
    lookup.FetchSourceLine("B", "1");
    lookup.FetchSourceLine("NONE", "1");
  }
  EXPECT_EQ(opened_, (std::vector<std::string>{"A", "B", "B", "NONE", "NONE"}));
}

}  // namespace
}  // namespace ptick
