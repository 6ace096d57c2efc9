#include "profile/ticks/number_texts.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace ptick {

namespace {

TEST(NumberTexts, GiveBackWhatWasRead) {
  const std::vector<std::string_view> texts = {
      "",    "0",  "7",   "2147483647", "2147483648", "4294967295", "99999999999", "007", "-1",
      "1.5", "+3", "abc", " 5",         "5\r",        "1e5",        "-0.0",        "0.5", "5."};
  NumberTexts numbers;
  std::vector<NumberTexts::Id> ids;
  for (const std::string_view text : texts) {
    ids.push_back(numbers.Add(text));
  }
  for (std::size_t i = 0; i < texts.size(); ++i) {
    EXPECT_EQ(numbers.Text(ids[i]), texts[i]);
    std::string out = ">";
    numbers.AppendText(ids[i], out);
    EXPECT_EQ(out, ">" + std::string(texts[i]));
  }
}

TEST(NumberTexts, AreNumbersAsTheValueLayerReadsThem) {
  for (const std::string_view text :
       {"", "0", "7", "2147483647", "2147483648", "99999999999999999999", "007", "-1", "1.5", "abc",
        " 5", "1e5", "-0.0"}) {
    NumberTexts numbers;
    EXPECT_EQ(numbers.AsNumber(numbers.Add(text)), Value(text).AsNumber()) << text;
  }
}

TEST(NumberTexts, HoldOrdinaryNumbersAsThemselves) {
  NumberTexts numbers;
  EXPECT_EQ(numbers.Add("0"), 0U);
  EXPECT_EQ(numbers.Add("2147483647"), 2147483647U);
  EXPECT_EQ(numbers.Add(""), NumberTexts::kEmpty);
}

}  // namespace

}  // namespace ptick
