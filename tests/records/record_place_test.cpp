#include "records/record_place.h"

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

namespace ptick {

namespace {

TEST(ProfileName, SplitsAtTheLastSlash) {
  struct Row {
    std::string_view name;
    std::string_view directory;
    std::string_view record;
  };
  const std::vector<Row> rows = {
      {"run1", ".", "run1"},
      {"a/b/c", "a/b", "c"},
      {"/tmp/run1", "/tmp", "run1"},
      {"/a/b/c", "/a/b", "c"},
      {"lists/src", "lists", "src"},
      {"/run1", "/", "run1"},
      {"run1/", "run1", ""},
      {"a/b/", "a/b", ""},
      {"./run1", ".", "run1"},
      {"../run1", "..", "run1"},
      {"a//b", "a/", "b"},
      {"//b", "/", "b"},
      {"/", "/", ""},
      {"", ".", ""},
      {".", ".", "."},
      {"..", ".", ".."},
      {"a b\tc", ".", "a b\tc"},
      {"a\\b", ".", "a\\b"},
      {"d ir/\xfe", "d ir", "\xfe"},
  };
  for (const Row& row : rows) {
    const RecordPlace place = SplitProfileName(row.name);
    EXPECT_EQ(place.directory, row.directory) << row.name;
    EXPECT_EQ(place.record, row.record) << row.name;
  }
}

}  // namespace

}  // namespace ptick
