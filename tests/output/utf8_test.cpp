#include "output/utf8.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ptick {

namespace {

using namespace std::string_view_literals;

std::string Encoded(char32_t code) {
  const auto rest = [code](unsigned int bits) {
    return static_cast<char>(0x80U | ((code >> bits) & 0x3FU));
  };
  if (code < 0x80) {
    return {static_cast<char>(code)};
  }
  if (code < 0x800) {
    return {static_cast<char>(0xC0U | code >> 6U), rest(0)};
  }
  if (code < 0x10000) {
    return {static_cast<char>(0xE0U | code >> 12U), rest(6), rest(0)};
  }
  return {static_cast<char>(0xF0U | code >> 18U), rest(12), rest(6), rest(0)};
}

TEST(Utf8, DecodesEveryCharacter) {
  for (char32_t code = 0; code <= 0x10FFFF; ++code) {
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    const std::string text = Encoded(code) + "\x80";
    const DecodedCharacter character = DecodeCharacter(text);
    const std::optional<char32_t> want = surrogate ? std::nullopt : std::optional(code);
    ASSERT_EQ(character.code, want) << std::uint32_t{code};
    ASSERT_EQ(character.size, surrogate ? 1 : text.size() - 1) << std::uint32_t{code};
  }
}

TEST(Utf8, TakesAByteThatBeginsNothingAlone) {
  const std::vector<std::string_view> rows = {"\x80",
                                              "\x9B[m",
                                              "\xBF\xBF",
                                              "\xC0\x80",
                                              "\xC1\xBF",
                                              "\xC2",
                                              "\xC2Z",
                                              "\xC2\xC2\x80",
                                              "\xDF\x7F",
                                              "\xE0\x9F\xBF",
                                              "\xE2",
                                              "\xE2\x82",
                                              "\xE2\x82Z",
                                              "\xE2\xC2\x80",
                                              "\xED\xA0\x80",
                                              "\xED\xBF\xBF",
                                              "\xF0\x8F\xBF\xBF",
                                              "\xF0\x9F\x98",
                                              "\xF0\x9FZ\x80",
                                              "\xF4\x90\x80\x80",
                                              "\xF5\x80\x80\x80",
                                              "\xFE\xFD\xFC",
                                              "\xFF",
                                              "\xE2\x82\xC0",
                                              "\xF0\x9F\x98Z"};
  for (const std::string_view text : rows) {
    const DecodedCharacter character = DecodeCharacter(text);
    EXPECT_EQ(character.code, std::nullopt) << ::testing::PrintToString(text);
    EXPECT_EQ(character.size, 1U) << ::testing::PrintToString(text);
  }
}

TEST(Utf8, LooksNoFurtherThanTheFirstCharacter) {
  EXPECT_EQ(DecodeCharacter("A\xFF").code, U'A');
  EXPECT_EQ(DecodeCharacter("\0A"sv).code, U'\0');
  EXPECT_EQ(DecodeCharacter("\xC3\xA9\xC3").size, 2U);
}

}  // namespace

}  // namespace ptick
