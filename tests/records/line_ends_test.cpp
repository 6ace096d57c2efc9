#include "records/line_ends.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace ptick {

namespace {

TEST(LineEnds, AreLineFeedsAndFieldMarks) {
  for (int byte = 0; byte < 256; ++byte) {
    const bool ends = byte == 10 || byte == 254;
    for (const unsigned at : {0U, 1U, 15U, 16U, 31U, 32U, 47U, 48U, 63U}) {
      std::string text(64, 'x');
      text[at] = static_cast<char>(byte);
      EXPECT_EQ(LineEnds(text.data()), std::uint64_t{ends} << at) << byte << " at " << at;
      EXPECT_EQ(LineEndsPortable(text.data()), std::uint64_t{ends} << at) << byte << " at " << at;
    }
  }
}

TEST(LineEnds, AreTheSameByBothWays) {
  std::mt19937 random(1);
  for (int round = 0; round < 1000; ++round) {
    std::string text;
    for (int n = 0; n < 64; ++n) {
      text += "\n\xfe\x0b\x09\xff\xfdx\0"[random() % 8];
    }
    EXPECT_EQ(LineEnds(text.data()), LineEndsPortable(text.data()));
  }
}

struct Skipped {
  std::size_t bytes;
  std::uint64_t missing;
  bool operator==(const Skipped&) const = default;
};

Skipped Skip(const std::string& text, std::uint64_t count) {
  // What is after the end is not looked at, whatever it is.
  const std::string padded = text + std::string(kLineEndsPadding, '\n');
  const char* const end = padded.data() + text.size();
  const char* const next = SkipLines(padded.data(), end, count);
  return {static_cast<std::size_t>(next - padded.data()), count};
}

TEST(SkipLines, CountsLineEnds) {
  struct Row {
    std::string text;
    std::uint64_t count;
    Skipped want;
  };
  const std::string x50(50, 'x');
  const std::vector<Row> rows = {
      {"", 1, {0, 1}},
      {"abc", 1, {3, 1}},
      {"abc", 5, {3, 5}},
      {"abc\n", 1, {4, 0}},
      {"abc\xfe", 1, {4, 0}},
      {"a\nb\nc", 1, {2, 0}},
      {"a\nb\nc", 2, {4, 0}},
      {"a\nb\nc", 3, {5, 1}},
      {"\n\xfe\n", 3, {3, 0}},
      {x50 + "\n" + x50 + "\n", 1, {51, 0}},
      {x50 + "\n" + x50 + "\n", 2, {102, 0}},
      {x50 + x50 + "\n", 1, {101, 0}},
      {x50 + x50 + "\n", 2, {101, 1}},
      {std::string(200, '\n'), 64, {64, 0}},
      {std::string(200, '\n'), 65, {65, 0}},
      {std::string(200, '\n'), 200, {200, 0}},
      {std::string(200, '\n'), 300, {200, 100}},
      {std::string(63, 'x') + "\n", 1, {64, 0}},
      {std::string(64, 'x') + "\n", 1, {65, 0}},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Skip(row.text, row.count), row.want) << row.text << " " << row.count;
  }
}

}  // namespace

}  // namespace ptick
