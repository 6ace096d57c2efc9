#include "records/record_place.h"

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

namespace ptick {
namespace {

TEST(ProfileName, SplitsAtTheLastSlash) {
  struct Row {
    std::string_view Name;
    std::string_view Directory;
    std::string_view Record;
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
    const RecordPlace place = SplitProfileName(row.Name);
    EXPECT_EQ(place.Directory, row.Directory) << row.Name;
    EXPECT_EQ(place.Record, row.Record) << row.Name;
  }
}

}  // namespace
}  // namespace ptick
