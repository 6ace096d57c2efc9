#include "value/text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace ptick {

namespace {

using namespace std::string_literals;

constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();

std::string AllBytes() {
  std::string bytes;
  for (int code = 0; code < 256; ++code) {
    bytes.push_back(static_cast<char>(static_cast<unsigned char>(code)));
  }
  return bytes;
}

TEST(Text, LengthCountsBytes) {
  EXPECT_EQ(Len(""), 0);
  EXPECT_EQ(Len("abc"), 3);
  EXPECT_EQ(Len("a\0b"s), 3);
  EXPECT_EQ(Len("\xC3\xA4\xFE"), 3);
}

TEST(Text, SubstringIsTotal) {
  struct Row {
    std::string of;
    std::int64_t start;
    std::int64_t length;
    std::string want;
  };
  const std::vector<Row> rows = {
      {"abcdef", 1, 3, "abc"},
      {"abcdef", 3, 2, "cd"},
      {"abcdef", 6, 1, "f"},
      {"abcdef", 5, 9, "ef"},
      {"abcdef", 2, kMax, "bcdef"},
      {"abcdef", 7, 1, ""},
      {"abcdef", kMax, 1, ""},
      {"abcdef", 1, 0, ""},
      {"abcdef", 1, -1, ""},
      {"abcdef", 1, kMin, ""},
      {"abcdef", 0, 2, "ab"},
      {"abcdef", -5, 2, "ab"},
      {"abcdef", kMin, 9, "abcdef"},
      {"", 1, 1, ""},
      {"", 0, 5, ""},
      {"a\0\xFE"s, 2, 2, "\0\xFE"s},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Substring(row.of, row.start, row.length), row.want)
        << row.of << " from " << row.start << " for " << row.length;
  }
}

TEST(Text, ChangeReplacesEveryOccurrenceFromTheStart) {
  struct Row {
    std::string of;
    std::string from;
    std::string to;
    std::string want;
  };
  const std::vector<Row> rows = {
      {"a.b.c", ".", "/", "a/b/c"},
      {"aaa", "aa", "b", "ba"},
      {"aaaa", "aa", "a", "aa"},
      {"abc", "x", "y", "abc"},
      {"abc", "", "y", "abc"},
      {"", "a", "b", ""},
      {"", "", "b", ""},
      {"abc", "abc", "", ""},
      {"abab", "b", "bb", "abbabb"},
      {"x", "x", "xx", "xx"},
      {"a", "ab", "c", "a"},
      {"\xFE"
       "a\xFE",
       "\xFE", "\n", "\na\n"},
      {"a\0b"s, "\0"s, "-", "a-b"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Change(row.of, row.from, row.to), row.want) << row.of << ": " << row.from;
  }
}

TEST(Text, TrimRemovesOuterRunsAndCutsInnerOnesToOne) {
  struct Row {
    std::string of;
    char removed;
    std::string want;
    std::string want_trailing;
  };
  const std::vector<Row> rows = {
      {"", ' ', "", ""},
      {"    ", ' ', "", ""},
      {"a", ' ', "a", "a"},
      {"  a   b  c  ", ' ', "a b c", "  a   b  c"},
      {"a  ", ' ', "a", "a"},
      {"  a", ' ', "a", "  a"},
      {"\t a\t", ' ', "\t a\t", "\t a\t"},
      {"00100200", '0', "102", "001002"},
      {"a\0\0b\0"s, '\0', "a\0b"s, "a\0\0b"s},
      {"\xFE\xFE"
       "a\xFE\xFE"
       "b\xFE",
       '\xFE',
       "a\xFE"
       "b",
       "\xFE\xFE"
       "a\xFE\xFE"
       "b"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Trim(row.of, row.removed), row.want) << row.of;
    EXPECT_EQ(TrimTrailing(row.of, row.removed), row.want_trailing) << row.of;
  }
  EXPECT_EQ(Trim(" a  b "), "a b");
  EXPECT_EQ(TrimTrailing(" a  b "), " a  b");
}

TEST(Text, SpaceGivesBlanks) {
  EXPECT_EQ(Space(3), "   ");
  EXPECT_EQ(Space(1), " ");
  EXPECT_EQ(Space(0), "");
  EXPECT_EQ(Space(-1), "");
  EXPECT_EQ(Space(kMin), "");
}

TEST(Text, CharTakesCodesModulo256) {
  struct Row {
    Value code;
    int want;
  };
  const std::vector<Row> rows = {
      {65, 65},
      {"065", 65},
      {0, 0},
      {255, 255},
      {256, 0},
      {511, 255},
      {-1, 255},
      {-256, 0},
      {-257, 255},
      {"13", 13},
      {"013", 13},
      {"", 0},
      {"abc", 0},
      {" 65", 0},
      {65.9, 65},
      {-0.5, 0},
      {-1.5, 255},
      {kMax, 255},
      {kMin, 0},
      {1e300, 0},
      {-256.0, 0},
      {"18446744073709551616", 0},
      {4503599627370497.0, 1},
  };
  for (const auto& row : rows) {
    const std::string want(1, static_cast<char>(static_cast<unsigned char>(row.want)));
    EXPECT_EQ(Char(row.code), want) << row.code.Text();
  }
}

TEST(Text, SeqIsTheCodeThatCharTook) {
  EXPECT_EQ(Seq(""), 0);
  EXPECT_EQ(Seq("ABC"), 65);
  EXPECT_EQ(Seq("\xFF"
                "a"),
            255);
  for (int code = 0; code < 256; ++code) {
    EXPECT_EQ(Seq(Char(code)), code);
  }
}

TEST(Text, QuoteEnclosesWhateverTheTextHolds) {
  EXPECT_EQ(Quote("abc", '"'), "\"abc\"");
  EXPECT_EQ(Quote("abc", '\''), "'abc'");
  EXPECT_EQ(Quote("", '"'), "\"\"");
  EXPECT_EQ(Quote("a\"b", '"'), "\"a\"b\"");
  EXPECT_EQ(Quote("\0"s, '\''), "'\0'"s);
}

TEST(Text, CaseConversionsTouchAsciiLettersOnly) {
  const std::string all = AllBytes();
  const std::string upper = UpperCase(all);
  const std::string lower = LowerCase(all);
  const std::string_view capitals = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
  const std::string_view smalls = "abcdefghijklmnopqrstuvwxyz";
  for (std::size_t at = 0; at < all.size(); ++at) {
    const std::size_t small = smalls.find(all[at]);
    const std::size_t capital = capitals.find(all[at]);
    EXPECT_EQ(upper[at], small == std::string_view::npos ? all[at] : capitals[small]) << at;
    EXPECT_EQ(lower[at], capital == std::string_view::npos ? all[at] : smalls[capital]) << at;
  }
  EXPECT_EQ(UpperCase(""), "");
  EXPECT_EQ(LowerCase("Trace_LINE 1"), "trace_line 1");
}

}  // namespace

}  // namespace ptick
