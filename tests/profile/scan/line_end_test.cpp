#include "profile/scan/line_end.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "support/scanned_line.h"

namespace ptick {

namespace {

using testing::ScannedLine;
using testing::TextsAfter;

void ExpectEnd(const std::string& line, bool has_empty_field) {
  for (const std::string_view after : TextsAfter()) {
    const ScannedLine scanned(line, after);
    const LineEnd end = FindLineEnd(scanned.Begin());
    EXPECT_EQ(end.at + 1, scanned.Next()) << line << " before " << after;
    EXPECT_EQ(end.has_empty_field, has_empty_field) << line << " before " << after;
  }
}

TEST(LineEnd, TellsWhetherAFieldIsEmpty) {
  struct Row {
    std::string line;
    bool want;
  };
  const std::vector<Row> rows = {
      {"", true},    {"a", false},     {"a\tb", false}, {"a\tb\tc", false},   {"\ta", true},
      {"a\t", true}, {"a\t\tb", true}, {"\t", true},    {"a\xfd\xff", false},
  };
  for (const Row& row : rows) {
    ExpectEnd(row.line, row.want);
  }
}

// Wherever in the 64 bytes that are looked at together, and on both sides of their border.
TEST(LineEnd, IsFoundWhereverItIs) {
  for (std::size_t size = 1; size <= 200; ++size) {
    const std::string field(size, 'f');
    ExpectEnd(field, false);
    ExpectEnd(field + "\tx", false);
    ExpectEnd(field + "\t", true);
    ExpectEnd(field + "\t\tx", true);
    ExpectEnd("\t" + field, true);
  }
}

}  // namespace

}  // namespace ptick
