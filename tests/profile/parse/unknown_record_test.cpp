#include "profile/parse/unknown_record.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "records/line_blocks.h"
#include "support/profiles.h"

namespace ptick {

namespace {

using testing::Tabs;

std::string Padded(std::string_view block) {
  return std::string(block) + std::string(kBlockPadding, '\0');
}

TEST(UnknownRecord, NamesATypeThatNobodyKnows) {
  struct Row {
    std::string line;
    std::optional<std::string> want;
  };
  const std::vector<Row> rows = {
      {"", std::nullopt},
      {"a remark", std::nullopt},
      {"PROFILE", std::nullopt},
      {"profile:bogus|1", std::nullopt},
      {"PROFILE:ticks|5", std::nullopt},
      {"PROFILE:TICKS|5", std::nullopt},
      {"PROFILE:ticks", std::nullopt},
      {"||PROFILE:ticks||5|", std::nullopt},
      {"PROFILE:", ""},
      {"PROFILE:|ticks|5", ""},
      {"PROFILE:||", ""},
      {"PROFILE:ticks |5", "ticks "},
      {"PROFILE:ticks:x|5", "ticks:x"},
      {"||PROFILE:bogus||5|", "bogus"},
      {"PROFILE:bogus", "bogus"},
      {"PROFILE:ticks\r", "ticks\r"},
  };
  for (const Row& row : rows) {
    const std::string line = Tabs(row.line);
    const std::optional<std::string_view> type = UnknownTypeOf(line);
    EXPECT_EQ(type, row.want) << row.line;
    // It is what a parser of the line alone says.
    EXPECT_EQ(testing::Parse(line).problem.has_value(), row.want.has_value()) << row.line;
  }
}

TEST(UnknownRecord, IsTheFirstOneOfABlock) {
  struct Row {
    std::string block;
    std::uint64_t lines;
    std::optional<std::string> want;
  };
  const std::vector<Row> rows = {
      {"", 0, std::nullopt},
      {"PROFILE:trace|A|1|2\n\nPROFILE:ticks|5\n", 3, std::nullopt},
      {"PROFILE:trace|A|1|2\n\nPROFILE:a|5\nPROFILE:b|1\n", 2, "PROFILE:a|5"},
      {"PROFILE:b|1\n", 0, "PROFILE:b|1"},
  };
  for (const Row& row : rows) {
    const std::string block = Tabs(row.block);
    const std::string padded = Padded(block);
    std::uint64_t lines = 10;
    const std::optional<UnknownRecord> found =
        FindUnknownRecord(std::string_view(padded).substr(0, block.size()), lines);
    EXPECT_EQ(lines, 10 + row.lines) << row.block;
    ASSERT_EQ(found.has_value(), row.want.has_value()) << row.block;
    if (found) {
      EXPECT_EQ(found->line, Tabs(*row.want)) << row.block;
    }
  }
}

}  // namespace

}  // namespace ptick
