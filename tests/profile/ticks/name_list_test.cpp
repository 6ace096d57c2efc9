#include "profile/ticks/name_list.h"

#include <gtest/gtest.h>

#include <string>

namespace ptick {

namespace {

TEST(NameList, KeepsEachNameInItsPlace) {
  NameList list;
  EXPECT_EQ(list.size(), 0U);
  EXPECT_EQ(list.Names().size(), 0U);
  for (int i = 0; i < 50000; ++i) {
    list.Append(std::to_string(i * 7 % 1000));
  }
  ASSERT_EQ(list.size(), 50000U);
  EXPECT_EQ(list.Names().size(), 1000U);
  for (std::size_t i = 0; i < list.size(); ++i) {
    ASSERT_EQ(list[i], std::to_string(i * 7 % 1000));
    ASSERT_EQ(list.Names()[list.IdOf(i)], list[i]);
  }
}

}  // namespace

}  // namespace ptick
