#include "value/chunk_list.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <utility>

namespace ptick {

namespace {

TEST(ChunkList, HoldsWhatWasAppendedWhereItWas) {
  constexpr std::size_t kMany = 100'000;
  ChunkList<std::size_t> list;
  EXPECT_EQ(list.size(), 0U);
  list.Append(7);
  const std::size_t& first = list[0];
  for (std::size_t n = 1; n < kMany; ++n) {
    EXPECT_EQ(list.size(), n);
    list.Append(7 + n);
  }
  ASSERT_EQ(list.size(), kMany);
  EXPECT_EQ(&list[0], &first);
  for (std::size_t n = 0; n < kMany; ++n) {
    ASSERT_EQ(list[n], 7 + n);
  }
  const ChunkList<std::size_t> moved = std::move(list);
  EXPECT_EQ(moved.size(), kMany);
  EXPECT_EQ(moved[kMany - 1], 7 + kMany - 1);
}

TEST(ChunkList, IsCopied) {
  ChunkList<std::size_t> list;
  for (std::size_t n = 0; n < 20'000; ++n) {
    list.Append(n);
  }
  ChunkList<std::size_t> copy = list;
  copy.Append(1);
  EXPECT_EQ(list.size(), 20'000U);
  ASSERT_EQ(copy.size(), 20'001U);
  EXPECT_EQ(copy[0], 0U);
  EXPECT_EQ(copy[19'999], 19'999U);
  EXPECT_EQ(copy[20'000], 1U);
  list = ChunkList<std::size_t>();
  EXPECT_EQ(list.size(), 0U);
  EXPECT_EQ(copy[19'999], 19'999U);
}

}  // namespace

}  // namespace ptick
