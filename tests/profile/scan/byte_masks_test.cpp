#include "profile/scan/byte_masks.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace ptick {

namespace {

/// A question to the masks, and for which bytes the answer is yes.
struct Row {
  std::string name;
  std::function<std::uint64_t(const ByteMasks<64>&)> ask;
  std::function<std::uint64_t(const PortableByteMasks<64>&)> ask_portable;
  std::function<bool(int byte)> is_meant;
};

template <typename Ask>
Row RowOf(std::string name, Ask ask, std::function<bool(int byte)> is_meant) {
  return {std::move(name), ask, ask, std::move(is_meant)};
}

std::vector<Row> Rows() {
  std::vector<Row> rows;
  for (const int byte : {0, 9, 10, 99, 127, 128, 253, 255}) {
    rows.push_back(RowOf(
        "equal " + std::to_string(byte),
        [byte](const auto& masks) { return masks.Equal(static_cast<char>(byte)); },
        [byte](int other) { return other == byte; }));
  }
  rows.push_back(RowOf(
      "digits", [](const auto& masks) { return masks.Digits(); },
      [](int byte) { return byte >= '0' && byte <= '9'; }));
  for (const int byte : {0, 10, 127}) {
    rows.push_back(RowOf(
        "at most " + std::to_string(byte),
        [byte](const auto& masks) { return masks.AtMost(static_cast<unsigned char>(byte)); },
        [byte](int other) { return other <= byte; }));
  }
  return rows;
}

TEST(ByteMasks, MarkEachByteAtEveryPlace) {
  for (const Row& row : Rows()) {
    for (int byte = 0; byte < 256; ++byte) {
      const char other = row.is_meant('x') ? '\xfe' : 'x';
      for (unsigned at = 0; at < 64; ++at) {
        std::string text(64, other);
        text[at] = static_cast<char>(byte);
        const std::uint64_t want = row.is_meant(byte) ? std::uint64_t{1} << at : 0;
        ASSERT_EQ(row.ask(ByteMasks<64>(text.data())), want) << row.name << byte << " at " << at;
        ASSERT_EQ(row.ask_portable(PortableByteMasks<64>(text.data())), want)
            << row.name << ": " << byte << " at " << at;
      }
    }
  }
}

// Neighbours must not disturb each other: every byte next to every other.
TEST(ByteMasks, MarkBytesBesideAnyOther) {
  for (const Row& row : Rows()) {
    for (int left = 0; left < 256; ++left) {
      for (int right = 0; right < 256; ++right) {
        std::string text;
        while (text.size() < 64) {
          text += static_cast<char>(left);
          text += static_cast<char>(right);
        }
        const std::uint64_t want = (row.is_meant(left) ? 0x5555555555555555U : 0) |
                                   (row.is_meant(right) ? 0xAAAAAAAAAAAAAAAAU : 0);
        ASSERT_EQ(row.ask(ByteMasks<64>(text.data())), want)
            << row.name << ": " << left << " beside " << right;
        ASSERT_EQ(row.ask_portable(PortableByteMasks<64>(text.data())), want)
            << row.name << ": " << left << " beside " << right;
      }
    }
  }
}

TEST(ByteMasks, TellWhetherTheyHoldAByte) {
  for (unsigned at = 0; at < 64; ++at) {
    std::string text(64, 'x');
    text[at] = 'y';
    EXPECT_TRUE(ByteMasks<64>(text.data()).Holds('y')) << at;
    EXPECT_TRUE(PortableByteMasks<64>(text.data()).Holds('y')) << at;
    EXPECT_FALSE(ByteMasks<64>(text.data()).Holds('z')) << at;
    EXPECT_FALSE(PortableByteMasks<64>(text.data()).Holds('z')) << at;
  }
}

TEST(ByteMasks, MarkNothingPastTheirSize) {
  const std::string text(64, '\t');
  EXPECT_EQ(ByteMasks<16>(text.data()).Equal('\t'), 0xFFFFU);
  EXPECT_EQ(PortableByteMasks<16>(text.data()).Equal('\t'), 0xFFFFU);
}

}  // namespace

}  // namespace ptick
