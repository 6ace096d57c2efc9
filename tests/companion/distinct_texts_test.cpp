#include "companion/distinct_texts.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "companion/utf8.h"

namespace ptick::companion {

namespace {

TEST(DistinctTexts, MarksTheSecondNameOfAText) {
  struct Row {
    std::vector<std::string_view> names;
    std::vector<std::string_view> want;
  };
  const std::vector<Row> rows = {
      {{"A", "", "A"}, {"A", "", "A"}},
      {{"caf\xE9"}, {"caf\xC3\xA9"}},
      {{"caf\xC3\xA9", "caf\xE9", "caf\xC3\xA9", "caf\xE9"},
       {"caf\xC3\xA9", "caf\xC3\xA9 (Latin-1)", "caf\xC3\xA9", "caf\xC3\xA9 (Latin-1)"}},
      {{"\xE9", "\xC3\xA9"}, {"\xC3\xA9", "\xC3\xA9 (Latin-1)"}},
      // A name that is what another one is marked as.
      {{"\xC3\xA9", "\xE9", "\xC3\xA9 (Latin-1)"},
       {"\xC3\xA9", "\xC3\xA9 (Latin-1)", "\xC3\xA9 (Latin-1) (Latin-1)"}},
      {{"\xC3\xA9 (Latin-1)", "\xC3\xA9", "\xE9"},
       {"\xC3\xA9 (Latin-1)", "\xC3\xA9", "\xC3\xA9 (Latin-1) (Latin-1)"}},
  };
  for (const Row& row : rows) {
    DistinctTexts texts;
    std::vector<std::string_view> got;
    for (const std::string_view name : row.names) {
      got.push_back(texts.Of(name));
    }
    EXPECT_EQ(got, row.want) << row.names[0];
  }
}

TEST(DistinctTexts, AreAsManyAsNames) {
  const std::vector<std::string_view> parts = {"\xE9", "\xC3\xA9", "\xC3",
                                               "\xA9", "a",        " (Latin-1)"};
  std::mt19937 random(7);
  for (int round = 0; round < 200; ++round) {
    DistinctTexts texts;
    std::map<std::string, std::string> text_of;
    std::map<std::string, std::string> name_of;
    for (int i = 0; i < 100; ++i) {
      std::string name;
      for (std::size_t length = random() % 4; length > 0; --length) {
        name += parts[random() % parts.size()];
      }
      const std::string text(texts.Of(name));
      EXPECT_TRUE(IsUtf8(text));
      EXPECT_EQ(text_of.emplace(name, text).first->second, text) << name;
      EXPECT_EQ(name_of.emplace(text, name).first->second, name) << text;
    }
  }
}

}  // namespace

}  // namespace ptick::companion
