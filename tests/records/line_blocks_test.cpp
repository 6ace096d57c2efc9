#include "records/line_blocks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "support/text_record.h"

namespace ptick {

namespace {

using testing::TextRecord;

/// What a record gave: all of its blocks together, and what was wrong with one of them.
struct Collected {
  std::string text;
  std::string fault;
};

Collected Collect(LineBlocks& blocks) {
  Collected collected;
  for (std::string_view block = blocks.Next(); !block.empty(); block = blocks.Next()) {
    if (block.back() != '\n') {
      collected.fault = "a block ends within a line";
    }
    // Read under the eyes of the sanitizers: the padding has to be there.
    std::string padding(kBlockPadding, '\0');
    std::copy_n(block.data() + block.size(), kBlockPadding, padding.begin());
    collected.text += block;
  }
  return collected;
}

constexpr std::array<std::size_t, 6> kPieces = {1, 2, 3, 7, 64, 100000};
constexpr std::array<std::size_t, 5> kBlockSizes = {1, 2, 5, 16, 1000};

TEST(RecordBlocks, HandOutWholeLinesHoweverTheyAreRead) {
  struct Row {
    std::string text;
    std::string want;
  };
  const std::vector<Row> rows = {
      {"", ""},
      {"a", "a\n"},
      {"a\n", "a\n"},
      {"a\n\n", "a\n\n"},
      {"\n", "\n"},
      {"\n\n\na", "\n\n\na\n"},
      {"one\ntwo\nthree", "one\ntwo\nthree\n"},
      {"one\xfetwo\nthree", "one\ntwo\nthree\n"},
      {"one\xfe\xfetwo", "one\n\ntwo\n"},
      {"\xfe", "\n"},
      {"one\r\ntwo\r", "one\r\ntwo\r\n"},
      {"\xfd\xfc\xff\n", "\xfd\xfc\xff\n"},
      {std::string("a\0b\n", 4), std::string("a\0b\n", 4)},
      {std::string(5000, 'x') + "\ny", std::string(5000, 'x') + "\ny\n"},
      {"y\n" + std::string(5000, 'x'), "y\n" + std::string(5000, 'x') + "\n"},
  };
  for (const Row& row : rows) {
    for (const std::size_t piece : kPieces) {
      for (const std::size_t block_size : kBlockSizes) {
        SCOPED_TRACE(row.text.substr(0, 40) + " in pieces of " + std::to_string(piece) +
                     ", blocks of " + std::to_string(block_size));
        RecordBlocks blocks(std::make_unique<TextRecord>(row.text, piece), block_size);
        const Collected collected = Collect(blocks);
        EXPECT_EQ(collected.text, row.want);
        EXPECT_EQ(collected.fault, "");
        EXPECT_FALSE(blocks.Failed());
      }
    }
  }
}

TEST(RecordBlocks, StayAtTheirEnd) {
  RecordBlocks blocks(std::make_unique<TextRecord>("a\nb"));
  EXPECT_EQ(Collect(blocks).text, "a\nb\n");
  EXPECT_EQ(blocks.Next(), "");
  EXPECT_EQ(blocks.Next(), "");
}

TEST(RecordBlocks, HandOutWholeLinesBeforeAFailure) {
  struct Row {
    std::string_view text;
    std::string_view want;
  };
  const std::vector<Row> rows = {{"", ""}, {"a", ""}, {"a\n", "a\n"}, {"a\nb\nc", "a\nb\n"}};
  for (const Row& row : rows) {
    for (const std::size_t piece : kPieces) {
      RecordBlocks blocks(
          std::make_unique<TextRecord>(std::string(row.text), piece, TextRecord::End::kFails));
      EXPECT_EQ(Collect(blocks).text, row.want) << row.text << " in pieces of " << piece;
      EXPECT_TRUE(blocks.Failed()) << row.text;
    }
  }
}

TEST(RecordBlocks, KnowNothingOfAFailureAhead) {
  RecordBlocks blocks(std::make_unique<TextRecord>("a\n", 100, TextRecord::End::kFails));
  EXPECT_EQ(blocks.Next(), "a\n");
  EXPECT_FALSE(blocks.Failed());
}

// The blocks that are handed on of a text, read in pieces of so many bytes.
std::vector<std::string> HandedOn(const std::string& text, std::size_t piece, TextRecord::End end,
                                  std::size_t block_size) {
  RecordBlocks blocks(std::make_unique<TextRecord>(text, piece, end), block_size);
  std::vector<std::string> handed_on;
  ByteBuffer memory;
  for (auto block = blocks.NextInto(memory); !block.empty(); block = blocks.NextInto(memory)) {
    handed_on.emplace_back(block);
  }
  EXPECT_EQ(blocks.Failed(), end == TextRecord::End::kFails);
  return handed_on;
}

TEST(RecordBlocks, AreHandedOnFullHoweverLittleAReadGives) {
  struct Row {
    std::string text;
    TextRecord::End end;
    std::vector<std::string> want;
  };
  using enum TextRecord::End;
  const std::vector<Row> rows = {
      {"", kReached, {}},
      {"a", kReached, {"a\n"}},
      {"ab\ncd\nef\ngh", kReached, {"ab\ncd\n", "ef\n", "gh\n"}},
      {"ab\ncd\nef\ngh\n", kReached, {"ab\ncd\n", "ef\ngh\n"}},
      {"ab\ncdefghijklm\nn", kReached, {"ab\n", "cdefghijklm\n", "n\n"}},
      {"", kFails, {}},
      {"ab\ncd\nef\ngh", kFails, {"ab\ncd\n", "ef\n"}},
  };
  for (const Row& row : rows) {
    for (const std::size_t piece : {std::size_t{1}, std::size_t{2}, std::size_t{5}}) {
      EXPECT_EQ(HandedOn(row.text, piece, row.end, 8), row.want)
          << row.text << " in pieces of " << piece;
    }
  }
}

TEST(RecordBlocks, KnowWhereTheNextLinesBegin) {
  for (const std::size_t piece : kPieces) {
    RecordBlocks blocks(std::make_unique<TextRecord>("ab\ncde\nf", piece), 3);
    EXPECT_EQ(blocks.Place(), 0U);
    EXPECT_EQ(blocks.SizeAhead(), 8U);
    std::uint64_t place = 0;
    for (auto block = blocks.Next(); !block.empty() && block != "f\n"; block = blocks.Next()) {
      place += block.size();
      EXPECT_EQ(blocks.Place(), place) << "in pieces of " << piece;
    }
    EXPECT_EQ(blocks.Place(), 8U) << "in pieces of " << piece;
    EXPECT_EQ(blocks.SizeAhead(), 0U);
  }
}

TEST(RecordBlocks, StartOverWithAnotherRecord) {
  RecordBlocks blocks(std::make_unique<TextRecord>("ab\ncd", 2, TextRecord::End::kFails), 4);
  EXPECT_EQ(Collect(blocks).text, "ab\n");
  EXPECT_TRUE(blocks.Failed());
  blocks.StartOver(std::make_unique<TextRecord>("e\nf", 1));
  EXPECT_FALSE(blocks.Failed());
  EXPECT_EQ(blocks.Place(), 0U);
  EXPECT_EQ(Collect(blocks).text, "e\nf\n");
}

}  // namespace

}  // namespace ptick
