#include "value/byte_buffer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

namespace ptick {

namespace {

TEST(ByteBuffer, IsAsLargeAsAskedFor) {
  EXPECT_EQ(ByteBuffer().size(), 0U);
  EXPECT_EQ(ByteBuffer(0).size(), 0U);
  EXPECT_EQ(ByteBuffer(70000).size(), 70000U);
}

TEST(ByteBuffer, KeepsTheBytesItIsToKeepWhenItGrows) {
  ByteBuffer buffer;
  buffer.Grow(6, 0);
  std::ranges::copy(std::string_view("abcdef"), buffer.data());
  buffer.Grow(12, 4);
  std::ranges::copy(std::string_view("EFGHIJKL"), buffer.data() + 4);
  EXPECT_EQ(std::string_view(buffer.data(), buffer.size()), "abcdEFGHIJKL");
}

TEST(ByteBuffer, HandsItsBytesOn) {
  ByteBuffer from(3);
  std::ranges::copy(std::string_view("abc"), from.data());
  ByteBuffer to(std::move(from));
  EXPECT_EQ(std::string_view(to.data(), to.size()), "abc");
}

}  // namespace

}  // namespace ptick
