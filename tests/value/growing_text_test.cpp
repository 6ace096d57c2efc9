#include "value/growing_text.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ptick {

namespace {

TEST(GrowingText, HoldsAllThatWasAppended) {
  GrowingText text;
  EXPECT_EQ(text.size(), 0U);
  text.Append({});
  EXPECT_EQ(text.size(), 0U);
  std::string want;
  for (std::size_t size = 0; size < 700; ++size) {
    const std::string piece(size, static_cast<char>('a' + size % 26));
    text.Append(piece);
    want += piece;
    ASSERT_EQ(std::string_view(text.data(), text.size()), want) << size;
  }
}

TEST(GrowingText, TakesTextsOfAnySizeAtOnce) {
  for (const std::size_t size : {1U, 63U, 64U, 65U, 1'000'000U}) {
    const std::string want(size, 'x');
    GrowingText text;
    text.Append(want);
    text.Append("y");
    EXPECT_EQ(std::string_view(text.data(), text.size()), want + "y") << size;
  }
}

TEST(GrowingText, HandsItsTextOn) {
  GrowingText from;
  from.Append("abc");
  GrowingText to(std::move(from));
  to.Append("def");
  EXPECT_EQ(std::string_view(to.data(), to.size()), "abcdef");
  from = std::move(to);
  EXPECT_EQ(std::string_view(from.data(), from.size()), "abcdef");
  to.Append("xyz");  // NOLINT(*-use-after-move,*-cplusplus.Move): it is empty
  EXPECT_EQ(std::string_view(to.data(), to.size()), "xyz");
}

TEST(GrowingText, IsCopied) {
  GrowingText from;
  GrowingText empty(from);
  EXPECT_EQ(empty.size(), 0U);
  from.Append("abc");
  GrowingText copy(from);
  from.Append("d");
  copy.Append("e");
  EXPECT_EQ(std::string_view(from.data(), from.size()), "abcd");
  EXPECT_EQ(std::string_view(copy.data(), copy.size()), "abce");
  copy = from;
  EXPECT_EQ(std::string_view(copy.data(), copy.size()), "abcd");
  const GrowingText& same = copy;
  copy = same;
  EXPECT_EQ(std::string_view(copy.data(), copy.size()), "abcd");
  copy = empty;
  EXPECT_EQ(copy.size(), 0U);
}

}  // namespace

}  // namespace ptick
