#include "reports/fitted_texts.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "value/mask.h"
#include "value/text.h"

namespace ptick {

namespace {

std::string Fitted(std::string_view text, std::int64_t width) {
  FittedTexts texts(width);
  texts.Begin();
  texts.Append(text);
  return std::string(texts[0]);
}

TEST(FittedTexts, AreCleaned) {
  struct Row {
    std::string_view text;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {"IF X THEN\t\tY", "IF X THEN Y"},
      {"     A  =  1", "A = 1"},
      {"A = 1   ", "A = 1"},
      {"\t \tA\t=\t1\t", "A = 1"},
      {"PRINT 'a   b'", "PRINT 'a b'"},
      {"", ""},
      {"   \t ", ""},
      {"A = 1\r", "A = 1\r"},
      {"A\xfd"
       "B\xfc"
       "C\x01",
       "A\xfd"
       "B\xfc"
       "C\x01"},
      {"??", "??"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Fitted(row.text, 35), row.want) << row.text;
  }
}

TEST(FittedTexts, AreCutToTheColumn) {
  struct Row {
    std::string text;
    std::int64_t width;
    std::string want;
  };
  const std::vector<Row> rows = {
      {std::string(50, 'x'), 35, std::string(35, 'x')},
      {std::string(35, 'x'), 35, std::string(35, 'x')},
      {std::string(34, 'x'), 35, std::string(34, 'x')},
      {std::string(100, 'x'), 87, std::string(87, 'x')},
      {"short", 35, "short"},
      {"ab cd", 3, "ab"},  // the blank that the cut leaves at the end goes, too
      {"ab cd", 4, "ab c"},
      {"ab", 1, "a"},
      {"ab", 0, ""},
      {"ab", -5, ""},
      {"   ab", 2, "ab"},  // cleaned first, then cut
      {"a b", 1, "a"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Fitted(row.text, row.width), row.want) << row.text << " in " << row.width;
  }
}

// Cleaning, a mask and trimming, step by step, whatever the pieces that a text comes in.
TEST(FittedTexts, AreWhatTheStepsOneByOneGive) {
  std::mt19937 random(1);
  for (int round = 0; round < 3000; ++round) {
    const auto width = static_cast<std::int64_t>(random() % 12);
    FittedTexts texts(width);
    std::vector<std::string> want;
    for (int n = 0; n < 5; ++n) {
      texts.Begin();
      std::string text;
      for (std::size_t pieces = random() % 4; pieces > 0; --pieces) {
        std::string piece;
        for (std::size_t size = random() % 8; size > 0; --size) {
          piece += " \tabc"[random() % 5];
        }
        texts.Append(piece);
        text += piece;
      }
      want.emplace_back(TrimTrailing(Mask::Left(width).Format(Trim(Change(text, "\t", " ")))));
    }
    for (std::size_t n = 0; n < want.size(); ++n) {
      ASSERT_EQ(texts[n], want[n]) << width;
    }
  }
}

TEST(FittedTexts, AreForgotten) {
  FittedTexts texts(10);
  for (const std::string_view text : {"one", "two", "three  ", "four"}) {
    texts.Begin();
    texts.Append(text);
  }
  texts.CutTo(9);
  EXPECT_EQ(texts.size(), 4U);
  texts.CutTo(2);
  ASSERT_EQ(texts.size(), 2U);
  EXPECT_EQ(texts[1], "two");
  texts.Begin();
  texts.Append(" new");
  EXPECT_EQ(texts[2], "new");
  texts.CutTo(0);
  EXPECT_EQ(texts.size(), 0U);
  texts.Begin();
  EXPECT_EQ(texts[0], "");
}

}  // namespace

}  // namespace ptick
