#include "platform/linux/large_pages.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <memory_resource>
#include <new>
#include <vector>

namespace ptick {

namespace {

TEST(LargePages, HoldSmallAndBigTables) {
  LargePages pages;
  for (const std::size_t size : {std::size_t{1}, LargePages::kPageSize - 1, LargePages::kPageSize,
                                 LargePages::kPageSize + 1, 5 * LargePages::kPageSize}) {
    std::pmr::vector<char> table(size, 'x', &pages);
    EXPECT_EQ(std::count(table.begin(), table.end(), 'x'), std::ptrdiff_t(size)) << size;
  }
}

TEST(LargePages, KeepWhatATableHoldsWhileItGrows) {
  LargePages pages;
  std::pmr::vector<std::size_t> table(&pages);
  constexpr std::size_t kCount = LargePages::kPageSize;
  for (std::size_t i = 0; i < kCount; ++i) {
    table.push_back(i);
  }
  for (std::size_t i = 0; i < kCount; ++i) {
    ASSERT_EQ(table[i], i);
  }
}

TEST(LargePages, AreRefusedLikeAnyMemory) {
  LargePages pages;
  EXPECT_THROW(std::ignore = pages.allocate(std::size_t{1} << 60U), std::bad_alloc);
}

TEST(LargePages, AreEqualOnlyToThemselves) {
  LargePages pages;
  LargePages others;
  EXPECT_TRUE(pages.is_equal(pages));
  EXPECT_FALSE(pages.is_equal(others));
}

}  // namespace

}  // namespace ptick
