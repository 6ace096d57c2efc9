#include "records/record_range.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "records/line_blocks.h"
#include "support/text_record.h"

namespace ptick {

namespace {

using testing::TextRecord;

/// The lines that begin in a range of a text, each with a line feed: what the range is to give.
std::string LinesFrom(std::string_view text, const ByteRange& range) {
  std::string lines;
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t end = std::min(text.find_first_of("\n\xfe", begin), text.size());
    if (range.begin <= begin && begin < range.end) {
      lines.append(text.substr(begin, end - begin)) += '\n';
    }
    begin = end + 1;
  }
  return lines;
}

std::string ReadRange(const RecordReader& record, const ByteRange& range, std::size_t block_size) {
  RecordBlocks blocks(std::make_unique<RecordRange>(record, range), block_size);
  std::string lines;
  for (std::string_view block = blocks.Next(); !block.empty(); block = blocks.Next()) {
    lines += block;
  }
  EXPECT_FALSE(blocks.Failed());
  return lines;
}

constexpr std::uint64_t kToTheEnd = std::numeric_limits<std::uint64_t>::max();

TEST(RecordRange, HasTheLinesThatBeginInIt) {
  const std::vector<std::string> texts = {"",
                                          "a",
                                          "a\n",
                                          "\n\n\n",
                                          "one\ntwo\nthree",
                                          "one\xfetwo\n\xfe",
                                          "\nab\n",
                                          "a\n\nb\n",
                                          "x\xfe\xfey\nz",
                                          std::string("\0\n\0", 3)};
  for (const std::string& text : texts) {
    for (const std::size_t piece : {std::size_t{1}, std::size_t{2}, std::size_t{100}}) {
      const TextRecord record(text, piece);
      for (std::uint64_t begin = 0; begin <= text.size(); ++begin) {
        for (std::uint64_t end = begin + 1; end <= text.size() + 2; ++end) {
          const ByteRange range{begin, end == text.size() + 2 ? kToTheEnd : end};
          for (const std::size_t block : {std::size_t{1}, std::size_t{3}, std::size_t{100}}) {
            EXPECT_EQ(ReadRange(record, range, block), LinesFrom(text, range))
                << text << " from " << begin << " to " << end << ", pieces of " << piece
                << ", blocks of " << block;
          }
        }
      }
    }
  }
}

TEST(RecordRange, ReadsItsLastLineToTheEnd) {
  const std::string line(20000, 'x');
  const TextRecord record("a\n" + line + "\nb\n");
  EXPECT_EQ(ReadRange(record, {0, 3}, 100), "a\n" + line + "\n");
  EXPECT_EQ(ReadRange(record, {3, 20002}, 100), "");
  EXPECT_EQ(ReadRange(record, {3, 20004}, 100), "b\n");
}

TEST(RecordRange, EndsWhereTheRecordHasBecomeShorter) {
  const TextRecord record("a\nb\n");
  EXPECT_EQ(ReadRange(record, {2, 100}, 100), "b\n");
  EXPECT_EQ(ReadRange(record, {50, 100}, 100), "");
}

TEST(RecordRange, FailsAsTheRecordDoes) {
  const TextRecord record("a\nb\nc", 2, TextRecord::End::kFails);
  RecordBlocks blocks(std::make_unique<RecordRange>(record, ByteRange{2, kToTheEnd}));
  EXPECT_EQ(blocks.Next(), "b\n");
  EXPECT_EQ(blocks.Next(), "");
  EXPECT_TRUE(blocks.Failed());
  EXPECT_EQ(blocks.Error(), TextRecord::kErrorAt);
}

}  // namespace

}  // namespace ptick
