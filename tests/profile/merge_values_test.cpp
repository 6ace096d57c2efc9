#include "profile/merge_values.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace ptick {
namespace {

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
  MergeValues values;
  for (const std::string& text : texts) {
    values.Append(text);
  }
  for (std::size_t i = 0; i < texts.size(); ++i) {
    EXPECT_EQ(values.Text(i), texts[i]);
    std::string line = "key\t";
    values.AppendText(i, line);
    EXPECT_EQ(line, "key\t" + texts[i]);
  }
}

TEST(MergeValues, AreReplaced) {
  const std::vector<std::string> texts = {"5", "abc", "", "007", "-9223372036854775808", "12"};
  for (const std::string& first : texts) {
    for (const std::string& second : texts) {
      MergeValues values;
      values.Append("before");
      values.Append(first);
      values.Append("1");
      values.Set(1, second);
      EXPECT_EQ(values.Text(1), second) << first << " by " << second;
      EXPECT_EQ(values.Text(0), "before");
      EXPECT_EQ(values.Text(2), "1");
    }
  }
}

TEST(MergeValues, AreAddedLikeNumbers) {
  struct Row {
    std::string_view First;
    std::vector<std::string_view> Added;
    std::string_view Want;
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
    MergeValues values;
    values.Append("1");
    values.Append(row.First);
    for (const std::string_view added : row.Added) {
      values.AddTo(1, added);
    }
    EXPECT_EQ(values.Text(1), row.Want) << row.First << " and " << row.Added.front();
    EXPECT_EQ(values.Text(0), "1");
  }
}

// Beyond 64 bits a sum goes on as a floating number; its text is that of the value layer.
TEST(MergeValues, GoOnBeyondWholeNumbers) {
  struct Row {
    std::string_view First;
    std::vector<std::string_view> Added;
    std::string_view Want;
  };
  const std::vector<Row> rows = {
      {"9223372036854775807", {"1"}, "9223372036854775808"},
      {"9223372036854775807", {"9223372036854775807"}, "18446744073709551616"},
      {"9223372036854775807", {"1", "1", "1"}, "9223372036854775808"},
      {"-9223372036854775808", {"-1"}, "-9223372036854775808"},
      {"9223372032559808512", {"4294967295", "1"}, "9223372036854775808"},
  };
  for (const Row& row : rows) {
    MergeValues values;
    values.Append(row.First);
    for (const std::string_view added : row.Added) {
      values.AddTo(0, added);
    }
    EXPECT_EQ(values.Text(0), row.Want) << row.First;
  }
}

TEST(MergeValues, AreReplacedAfterASum) {
  MergeValues values;
  values.Append("abc");
  values.AddTo(0, "5");
  values.Set(0, "xyz");
  EXPECT_EQ(values.Text(0), "xyz");
  values.AddTo(0, "2");
  EXPECT_EQ(values.Text(0), "2");
}

}  // namespace
}  // namespace ptick
