#include "profile/parse/perform_fields.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "support/profiles.h"

namespace ptick {

namespace {

/// `text` with the bytes that the tests write as others: "|" is a TAB, "]" a value mark, "\" a
/// sub-value mark, "^" a field mark and "$" the mark of a shell command.
std::string Marks(std::string_view text) {
  std::string marked = testing::Tabs(text);
  std::ranges::replace(marked, ']', '\xfd');
  std::ranges::replace(marked, '\\', '\xfc');
  std::ranges::replace(marked, '^', '\xfe');
  std::ranges::replace(marked, '$', '\xff');
  return marked;
}

/// The wanted entry, with the bytes that the tests write as others; "]" stays.
std::string UnmarkedValues(std::string_view text) {
  std::string marked = Marks(text);
  std::ranges::replace(marked, '\xfd', ']');
  return marked;
}

struct Row {
  std::string record;
  std::string want;
};

void ExpectEntries(const std::vector<Row>& rows) {
  for (const Row& row : rows) {
    const std::string record = Marks(row.record);
    TabFields fields(record);
    fields.Next();
    PerformTable performs;
    AddPerform(fields, true, performs);
    const std::vector<std::string> entries = testing::Texts(performs);
    ASSERT_LE(entries.size(), 1U) << row.record;
    EXPECT_EQ(entries.empty() ? "" : entries.front(), UnmarkedValues(row.want)) << row.record;
  }
}

TEST(PerformFields, HasAPlaceForEachKey) {
  ExpectEntries({
      {"perform|startclock|1|endclock|2|starttime|3|endtime|4|ticks|5|usrcpu|6|syscpu|7|type|8|"
       "cmd|LIST",
       "1]2]3]4]5]6]7]8]LIST"},
      {"perform|type|8|syscpu|7|usrcpu|6|ticks|5|endtime|4|starttime|3|endclock|2|startclock|1|"
       "cmd|LIST",
       "1]2]3]4]5]6]7]8]LIST"},
      {"perform|startclock|1|cmd|C", "1]]]]]]]]C"},
      {"perform|endclock|1|cmd|C", "]1]]]]]]]C"},
      {"perform|starttime|1|cmd|C", "]]1]]]]]]C"},
      {"perform|endtime|1|cmd|C", "]]]1]]]]]C"},
      {"perform|ticks|1|cmd|C", "]]]]1]]]]C"},
      {"perform|usrcpu|1|cmd|C", "]]]]]1]]]C"},
      {"perform|syscpu|1|cmd|C", "]]]]]]1]]C"},
      {"perform|type|1|cmd|C", "]]]]]]]1]C"},
      {"perform|cmd|C", "]]]]]]]]C"},
      {"PERFORM|cmd|C", "]]]]]]]]C"},
      // The last of several counts.
      {"perform|ticks|1|ticks|2|cmd|C", "]]]]2]]]]C"},
      // Texts are kept as they were read.
      {"perform|ticks|007|usrcpu|abc|syscpu| x |cmd|C", "]]]]007]abc] x ]]C"},
  });
}

TEST(PerformFields, SkipsUnknownKeysWithTheirValues) {
  ExpectEntries({
      {"perform|other|9|cmd|C", "]]]]]]]]C"},
      {"perform|Ticks|9|cmd|C", "]]]]]]]]C"},
      {"perform|TICKS|9|CMD|X|cmd|C", "]]]]]]]]C"},
      {"perform|ticks |9|cmd|C", "]]]]]]]]C"},
      {"perform|other|ticks|ticks|5|cmd|C", "]]]]5]]]]C"},
      {"perform|other|cmd|cmd|C", "]]]]]]]]C"},
      {"perform|ticks|cmd|cmd|C", "]]]]cmd]]]]C"},
  });
}

TEST(PerformFields, TakesTheCommandToTheEndOfTheLine) {
  ExpectEntries({
      {"perform|cmd|LIST CUST|WITH A|BY B", "]]]]]]]]LIST CUST|WITH A|BY B"},
      {"perform|cmd|C|ticks|5", "]]]]]]]]C|ticks|5"},
      {"perform|cmd|C|cmd|D", "]]]]]]]]C|cmd|D"},
      {"perform|cmd| C ", "]]]]]]]] C "},
      {"perform|cmd|C||D", "]]]]]]]]C||D"},
      // It is cut at the first field or value mark; sub-value marks stay.
      {"perform|cmd|LIST]CUST", "]]]]]]]]LIST"},
      {"perform|cmd|LIST^CUST]X", "]]]]]]]]LIST"},
      {"perform|cmd|LIST]X^CUST", "]]]]]]]]LIST"},
      {"perform|cmd|LIST|A^X", "]]]]]]]]LIST|A"},
      {"perform|cmd|LIST\\CUST", "]]]]]]]]LIST\\CUST"},
      // The mark of a shell command goes with the character after it.
      {"perform|cmd|$Kls -l", "]]]]]]]]ls -l"},
      {"perform|cmd|$$ls", "]]]]]]]]ls"},
      {"perform|cmd|$]ls", "]]]]]]]]ls"},
      {"perform|cmd|$^ls", "]]]]]]]]ls"},
      {"perform|cmd|$K$Jls", "]]]]]]]]$Jls"},
      {"perform|cmd|K$ls", "]]]]]]]]K$ls"},
      {"perform|cmd|$|ls", "]]]]]]]]ls"},
  });
}

TEST(PerformFields, IsNothingWithoutACommand) {
  ExpectEntries({
      {"perform", ""},
      {"perform|", ""},
      {"perform|ticks|5", ""},
      {"perform|ticks|5|cmd", ""},
      {"perform|ticks|5|cmd|", ""},
      {"perform|cmd|]LIST", ""},
      {"perform|cmd|^LIST", ""},
      {"perform|cmd|$", ""},
      {"perform|cmd|$K", ""},
      {"perform|cmd|$K]ls", ""},
      {"perform|CMD|LIST", ""},
      // An empty key ends the pairs.
      {"perform||ticks|5|cmd|C", ""},
      {"perform|ticks|5||x|cmd|C", ""},
  });
}

// A text that holds value marks fills the places after its own as well.
TEST(PerformFields, SpreadsTextsThatHoldValueMarks) {
  ExpectEntries({
      {"perform|startclock|a]b|cmd|C", "a]b]]]]]]]C"},
      {"perform|startclock|a]b|endclock|x|cmd|C", "a]x]]]]]]]C"},
      {"perform|endclock|x|startclock|a]b|cmd|C", "a]b]x]]]]]]C"},
      {"perform|ticks|5|startclock|]|cmd|C", "]]]]]5]]]C"},
      {"perform|type|t]X", "]]]]]]]t]X"},
      {"perform|type|t]X|cmd|C", "]]]]]]]t]C"},
      {"perform|type|t]X|cmd", ""},
      {"perform|type|t]X]Y|cmd|C", "]]]]]]]t]C"},
      {"perform|other|a]b|ticks|5|cmd|C", "]]]]5]]]]C"},
      {"perform|startclock|1]2]3]4]5]6]7]8]9]10", "1]2]3]4]5]6]7]8]9"},
      {"perform|startclock|1]2]3]4]5]6]7]8]9]10|ticks|x]y", "1]2]3]4]x]y]6]7]8"},
      {"perform|startclock|1]2]3]4]5]6]7]8]9|startclock|]", "]]2]3]4]5]6]7]8"},
      {"perform|type|t|ticks|5|startclock|]]]]]]]]]|cmd|C", "]]]]]]]]C"},
      {"perform|ticks|a\\b]c\\d|cmd|C", "]]]]a\\b]c\\d]]]C"},
  });
}

/// A record of `pairs` pairs of an unknown key, then `last`.
std::string After(int pairs, std::string_view last) {
  std::string record = "perform";
  for (int pair = 0; pair < pairs; ++pair) {
    record += "|key|value";
  }
  return record + "|" + std::string(last);
}

TEST(PerformFields, ReadsNoKeyAfterField1000) {
  ExpectEntries({
      {After(499, "cmd|C"), "]]]]]]]]C"},
      {After(500, "cmd|C"), ""},
      {After(498, "ticks|5|cmd|C"), "]]]]5]]]]C"},
      {After(499, "type|t]C"), "]]]]]]]t]C"},
      {After(500, "type|t]C"), ""},
      {After(2000, "cmd|C"), ""},
  });
}

}  // namespace

}  // namespace ptick
