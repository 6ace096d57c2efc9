#include "records/line_count.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <numeric>
#include <optional>
#include <string>
#include <vector>

#include "records/line_finder.h"
#include "support/text_record.h"

namespace ptick {

namespace {

using testing::TextRecord;

class NoSink final : public LineSink {
 public:
  void Take(std::size_t /*n*/, std::string_view /*piece*/) override {}
  void Forget(std::size_t /*n*/) override {}
};

TEST(LineCount, IsThatOfTheLinesThatCanBeFound) {
  std::vector<std::uint32_t> all(2000);
  std::iota(all.begin(), all.end(), 1U);
  struct Row {
    std::string text;
    std::uint64_t want;
  };
  const std::vector<Row> rows = {
      {"", 0},
      {"a", 1},
      {"a\n", 1},
      {"\n", 1},
      {"\n\n", 2},
      {"a\xfe", 2},
      {"a\xfe\n", 2},
      {"\xfe", 2},
      {"a\xfe\xfe", 3},
      {"a\xfe"
       "b\nc",
       3},
      {std::string(1500, '\n') + "end", 1501},
  };
  for (const Row& row : rows) {
    for (const std::size_t piece : {std::size_t{1}, std::size_t{7}, std::size_t{100000}}) {
      TextRecord counted(row.text, piece);
      EXPECT_EQ(CountLines(counted), row.want) << row.text;
      TextRecord searched(row.text, piece);
      NoSink sink;
      EXPECT_EQ(LineFinder().Find(searched, all, 0, sink), row.want) << row.text;
    }
  }
}

TEST(LineCount, IsUnknownWhereReadingFails) {
  TextRecord record("a\nb", 2, TextRecord::End::kFails);
  EXPECT_EQ(CountLines(record), std::nullopt);
}

}  // namespace

}  // namespace ptick
