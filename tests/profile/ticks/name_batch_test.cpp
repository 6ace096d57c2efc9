#include "profile/ticks/name_batch.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ptick {

namespace {

std::vector<NameTable::Id> Interned(NameTable& table, const std::vector<std::string_view>& names) {
  std::array<NameTable::Id, kNameBatch> ids{};
  InternNames(table, names, ids.data());
  return {ids.begin(), ids.begin() + static_cast<std::ptrdiff_t>(names.size())};
}

TEST(NameBatch, NumbersNamesAsOneByOne) {
  NameTable table;
  EXPECT_EQ(Interned(table, {}), std::vector<NameTable::Id>());
  EXPECT_EQ(Interned(table, {"b", "a", "b", ""}), (std::vector<NameTable::Id>{0, 1, 0, 2}));
  EXPECT_EQ(Interned(table, {"c", "c", "a"}), (std::vector<NameTable::Id>{3, 3, 1}));
}

// Known names and new ones among each other, while the table grows big.
TEST(NameBatch, NumbersTheNamesOfABigTable) {
  constexpr std::size_t kMany = 20'000;
  NameTable table;
  NameTable one_by_one;
  std::vector<std::string> names;
  for (std::size_t n = 0; n < kMany; ++n) {
    names.push_back("name " + std::to_string(n * n % 15'013));
  }
  for (std::size_t start = 0; start < kMany; start += kNameBatch) {
    const std::size_t size = std::min(kNameBatch, kMany - start);
    const std::vector<std::string_view> batch(
        names.begin() + static_cast<std::ptrdiff_t>(start),
        names.begin() + static_cast<std::ptrdiff_t>(start + size));
    const std::vector<NameTable::Id> ids = Interned(table, batch);
    for (std::size_t n = 0; n < size; ++n) {
      ASSERT_EQ(ids[n], one_by_one.Intern(batch[n])) << batch[n];
    }
  }
  EXPECT_GT(table.size(), 5000U);
}

}  // namespace

}  // namespace ptick
