#include "profile/merge/merge_values.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "value/number_text.h"
#include "value/value.h"

namespace ptick {

namespace {

/// Values of as many keys, numbered from 0.
struct Values {
  MergeValues merged;

  void Append(std::string_view text) {
    const std::string head = "key" + std::to_string(merged.Keys().size());
    merged.Set(merged.Keys().Intern(MergeKey{.head = head}), text);
  }
};

TEST(MergeValues, KeepTextsAsTheyWereRead) {
  const std::vector<std::string> texts = {
      "0",
      "5",
      "4294967295",
      "4294967296",
      "9223372036854775807",
      "-9223372036854775808",
      "",
      "007",
      "1.50",
      "-3",
      "99999999999999999999",
      "+4",
      "1e5",
      "abc",
      " 5",
      "5 ",
      "5\r",
      "00",
      "-0.0",
      ".5",
      "5.",
      "-",
      "a\375b",
      "0x10",
  };
  Values values;
  for (const std::string& text : texts) {
    values.Append(text);
  }
  for (MergeKeys::Id i = 0; i < texts.size(); ++i) {
    EXPECT_EQ(values.merged.Text(i), texts[i]);
    std::string line = "key\t";
    values.merged.AppendText(i, line);
    EXPECT_EQ(line, "key\t" + texts[i]);
  }
}

TEST(MergeValues, AreReplaced) {
  const std::vector<std::string> texts = {"5", "abc", "", "007", "-9223372036854775808", "12"};
  for (const std::string& first : texts) {
    for (const std::string& second : texts) {
      Values values;
      values.Append("before");
      values.Append(first);
      values.Append("1");
      values.merged.Set(1, second);
      EXPECT_EQ(values.merged.Text(1), second) << first << " by " << second;
      EXPECT_EQ(values.merged.Text(0), "before");
      EXPECT_EQ(values.merged.Text(2), "1");
    }
  }
}

TEST(MergeValues, AreAddedLikeNumbers) {
  struct Row {
    std::string_view first;
    std::vector<std::string_view> added;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {"3", {"4"}, "7"},
      {"3", {"4", "5", "6"}, "18"},
      {"007", {"1"}, "8"},
      {"1", {"007"}, "8"},
      {"1.50", {"1"}, "2.5"},
      {"1.5", {"1.5"}, "3"},
      {"0.1", {"0.1", "0.1"}, "0.3"},
      {"4.02", {"4.02", "4.02"}, "12.06"},
      {"5", {"-7"}, "-2"},
      {"-2", {"2"}, "0"},
      {"-2", {"-2"}, "-4"},
      {"5", {""}, "5"},
      {"", {"5"}, "5"},
      {"", {""}, "0"},
      {"abc", {"5"}, "5"},
      {"5", {"abc"}, "5"},
      {"LIST X", {"LIST X"}, "0"},
      {"1e5", {"1"}, "1"},
      {" 5", {"1"}, "1"},
      {"+4", {"+4"}, "8"},
      {"4294967295", {"4294967295"}, "8589934590"},
      {"4294967295", {"4294967296"}, "8589934591"},
      {"9223372036854775806", {"1"}, "9223372036854775807"},
      {"-9223372036854775807", {"-1"}, "-9223372036854775808"},
      {"-9223372036854775807", {"-1", "5"}, "-9223372036854775803"},
  };
  for (const Row& row : rows) {
    Values values;
    values.Append("1");
    values.Append(row.first);
    for (const std::string_view added : row.added) {
      values.merged.AddTo(1, added);
    }
    EXPECT_EQ(values.merged.Text(1), row.want) << row.first << " and " << row.added.front();
    EXPECT_EQ(values.merged.Text(0), "1");
  }
}

// Beyond 64 bits a sum goes on as a floating number; its text is that of the value layer.
TEST(MergeValues, GoOnBeyondWholeNumbers) {
  struct Row {
    std::string_view first;
    std::vector<std::string_view> added;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {"9223372036854775807", {"1"}, "9223372036854775808"},
      {"9223372036854775807", {"9223372036854775807"}, "18446744073709551616"},
      {"9223372036854775807", {"1", "1", "1"}, "9223372036854775808"},
      {"-9223372036854775808", {"-1"}, "-9223372036854775808"},
      {"9223372032559808512", {"4294967295", "1"}, "9223372036854775808"},
  };
  for (const Row& row : rows) {
    Values values;
    values.Append(row.first);
    for (const std::string_view added : row.added) {
      values.merged.AddTo(0, added);
    }
    EXPECT_EQ(values.merged.Text(0), row.want) << row.first;
  }
}

// Numbers that were read as such, beside texts.
TEST(MergeValues, TakeNumbers) {
  Values values;
  values.merged.Keys().Intern(MergeKey{.head = "new"});
  values.merged.AddTo(0, 5U);
  EXPECT_EQ(values.merged.Text(0), "5");
  values.merged.AddTo(0, 4294967295U);
  EXPECT_EQ(values.merged.Text(0), "4294967300");
  values.merged.Set(0, "1.50");
  values.merged.AddTo(0, 2U);
  EXPECT_EQ(values.merged.Text(0), "3.5");
  values.merged.Set(0, "9223372036854775806");
  values.merged.AddTo(0, 1U);
  EXPECT_EQ(values.merged.Text(0), "9223372036854775807");
  values.merged.AddTo(0, 1U);
  EXPECT_EQ(values.merged.Text(0), "9223372036854775808");
}

// As the value layer compares texts, whether they are held as numbers or aside.
TEST(MergeValues, AreComparedWithTexts) {
  const std::vector<std::string> texts = {"",
                                          "0",
                                          "5",
                                          "10",
                                          "007",
                                          "1.50",
                                          "-3",
                                          "5.0",
                                          "abc",
                                          "5x",
                                          " 5",
                                          "\377",
                                          "+5",
                                          "4294967296",
                                          "-0.0",
                                          "1e5",
                                          "99999999999999999999"};
  for (const std::string& text : texts) {
    Values values;
    values.Append(text);
    for (const std::string& other : texts) {
      EXPECT_EQ(values.merged.Compare(0, other), Compare(Value(text), Value(other)))
          << text << " and " << other;
    }
  }
}

TEST(MergeValues, AreComparedAfterASum) {
  Values values;
  values.Append("1.25");
  values.merged.AddTo(0, "1.25");
  EXPECT_EQ(values.merged.Compare(0, "2.5"), 0);
  EXPECT_EQ(values.merged.Compare(0, "2.4"), 1);
  EXPECT_EQ(values.merged.Compare(0, "2.50001"), -1);
  values.merged.AddTo(0, "0.5");
  EXPECT_EQ(values.merged.Compare(0, "3"), 0);
}

// A whole number that a floating sum has come to is added to exactly again.
TEST(MergeValues, AreWholeAgainWhereTheyFit) {
  Values values;
  values.Append("9223372036854775807");
  values.merged.AddTo(0, "1");
  values.merged.AddTo(0, "-1025");
  EXPECT_EQ(values.merged.Text(0), "9223372036854774784");
  values.merged.AddTo(0, "1");
  EXPECT_EQ(values.merged.Text(0), "9223372036854774785");
  values.merged.AddTo(0, "-9223372036854774785");
  values.merged.AddTo(0, 3U);
  EXPECT_EQ(values.merged.Text(0), "3");
}

// Each sum is what its text says, cut to four decimals.
TEST(MergeValues, AreCutToTheDecimalsOfATextAfterEachSum) {
  Values values;
  values.Append("1");
  for (int n = 0; n < 3; ++n) {
    values.merged.AddTo(0, "0.00006");
  }
  EXPECT_EQ(values.merged.Text(0), "1");
  values.merged.AddTo(0, "0.00016");
  EXPECT_EQ(values.merged.Text(0), "1.0001");
  values.merged.AddTo(0, "123456789012.3456");
  EXPECT_EQ(values.merged.Text(0), "123456789013.346");
}

TEST(MergeValues, MayBeVeryLargeAndVerySmallNumbers) {
  struct Row {
    std::string first;
    std::string added;
    std::string want;
  };
  const std::string largest =
      DecimalText(std::numeric_limits<double>::max());  // 309 digits, the last of them exact
  const std::vector<Row> rows = {
      {std::string(400, '9'), "5", largest},
      {std::string(400, '9'), "-" + std::string(400, '9'), "0"},
      {"-9223372036854775808", "0", "-9223372036854775808"},
      {"-9223372036854775808", "9", "-9223372036854775799"},
      {"-9223372032559808513", "1", "-9223372032559808512"},
      {"-9223372032559808512", "-1", "-9223372032559808513"},
      {"-9223372028264841217", "1", "-9223372028264841216"},
      {"-9223372028264841216", "-1", "-9223372028264841217"},
  };
  for (const Row& row : rows) {
    Values values;
    values.Append("before");
    values.Append(row.first);
    values.merged.AddTo(1, row.added);
    EXPECT_EQ(values.merged.Text(1), row.want) << row.first;
    EXPECT_EQ(values.merged.Text(0), "before");
  }
}

TEST(MergeValues, AreReplacedAfterASum) {
  Values values;
  values.Append("abc");
  values.merged.AddTo(0, "5");
  values.merged.Set(0, "xyz");
  EXPECT_EQ(values.merged.Text(0), "xyz");
  values.merged.AddTo(0, "2");
  EXPECT_EQ(values.merged.Text(0), "2");
}

}  // namespace

}  // namespace ptick
