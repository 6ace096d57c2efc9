#include "records/record_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "support/text_record.h"

namespace ptick {

namespace {

using testing::TextRecord;

std::vector<std::string> Fields(const RecordText& record) {
  std::vector<std::string> fields;
  for (std::size_t n = 1; n <= record.FieldCount(); ++n) {
    fields.emplace_back(record.ReadField(n).value_or("(none)"));
  }
  return fields;
}

TEST(RecordText, HasOneFieldPerLine) {
  struct Row {
    std::string text;
    std::vector<std::string> want;
  };
  const std::vector<Row> rows = {
      {"", {}},
      {"a", {"a"}},
      {"a\n", {"a"}},
      {"a\n\n", {"a", ""}},
      {"\n", {""}},
      {"\na", {"", "a"}},
      {"one\ntwo\nthree", {"one", "two", "three"}},
      {"one\ntwo\n", {"one", "two"}},
      {"one\xfetwo", {"one", "two"}},
      {"one\xfetwo\nthree\n", {"one", "two", "three"}},
      {"one\xfe", {"one", ""}},
      {"\xfe", {"", ""}},
      {"one\r\ntwo\r", {"one\r", "two\r"}},
      {"a\xfd"
       "b\xfc"
       "c\xff\n",
       {"a\xfd"
        "b\xfc"
        "c\xff"}},
      {std::string("a\0b", 3), {std::string("a\0b", 3)}},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Fields(RecordText(row.text)), row.want) << row.text;
  }
}

TEST(RecordText, HasNoFieldsOutOfRange) {
  const RecordText record("one\ntwo\n");
  EXPECT_EQ(record.ReadField(0), std::nullopt);
  EXPECT_EQ(record.ReadField(2), "two");
  EXPECT_EQ(record.ReadField(3), std::nullopt);
  EXPECT_EQ(record.ReadField(~std::size_t{0}), std::nullopt);
  EXPECT_EQ(RecordText().ReadField(0), std::nullopt);
  EXPECT_EQ(RecordText().ReadField(1), std::nullopt);
  EXPECT_EQ(RecordText().FieldCount(), 0U);
}

TEST(ReadRecordText, ReadsToTheEndHoweverItComes) {
  std::string big;
  for (int line = 1; line <= 20000; ++line) {
    big += "line " + std::to_string(line) + "\n";
  }
  for (const std::size_t piece : {1U, 1000U, 10000000U}) {
    TextRecord record(big, piece);
    const std::optional<RecordText> text = ReadRecordText(record);
    ASSERT_TRUE(text) << piece;
    EXPECT_EQ(text->FieldCount(), 20000U) << piece;
    EXPECT_EQ(text->ReadField(1), "line 1") << piece;
    EXPECT_EQ(text->ReadField(20000), "line 20000") << piece;
  }
}

TEST(ReadRecordText, ReadsAnEmptyRecord) {
  TextRecord record("");
  const std::optional<RecordText> text = ReadRecordText(record);
  ASSERT_TRUE(text);
  EXPECT_EQ(text->FieldCount(), 0U);
}

TEST(ReadRecordText, GivesNothingOfARecordThatCannotBeReadToItsEnd) {
  for (const std::string text : {"a\n", ""}) {
    TextRecord record(text, 100, TextRecord::End::kFails);
    int error = 0;
    EXPECT_FALSE(ReadRecordText(record, {}, &error));
    EXPECT_EQ(error, EIO);
  }
  TextRecord record("a\n", 100, TextRecord::End::kFails);
  EXPECT_FALSE(ReadRecordText(record));
}

TEST(ReadRecordText, ReadsNoFurtherThanItMay) {
  struct Row {
    std::string text;
    TextLimits limits;
    std::optional<std::size_t> want_fields;
  };
  const std::vector<Row> rows = {
      {"a\nb\n", {.fields = 2}, 2},
      {"a\nb", {.fields = 2}, 2},
      {"a\xfe", {.fields = 2}, 2},
      {"a\nb\nc", {.fields = 2}, 3},
      {"a\nb\nc\nd\n", {.fields = 2}, 3},
      {"p\xfeq\xfer\xfes", {.fields = 2}, 4},  // the mark after r begins a field, too
      {"", {.fields = 0}, 0},
      {"a", {.fields = 0}, 1},
      {"a\nb\n", {.bytes = 4}, 2},
      {"a\nb\nc", {.bytes = 4}, std::nullopt},
      {"a\nb\nc\nd", {.fields = 2, .bytes = 6}, 3},
      {"", {.bytes = 0}, 0},
      {"a", {.bytes = 0}, std::nullopt},
  };
  for (const Row& row : rows) {
    TextRecord record(row.text, 1);
    int error = 0;
    const std::optional<RecordText> text = ReadRecordText(record, row.limits, &error);
    EXPECT_EQ(text.has_value(), row.want_fields.has_value()) << row.text;
    EXPECT_EQ(error, row.want_fields ? 0 : EFBIG) << row.text;
    if (text) {
      EXPECT_EQ(text->FieldCount(), row.want_fields) << row.text;
    }
  }
}

/// A record that never ends.
class Endless final : public RecordReader {
 public:
  explicit Endless(char byte) : byte_(byte) {}

  std::optional<std::size_t> Read(std::span<char> block) override {
    std::ranges::fill(block, byte_);
    given_ += block.size();
    return block.size();
  }

  std::size_t Given() const { return given_; }

 private:
  char byte_;
  std::size_t given_ = 0;
};

TEST(ReadRecordText, ComesBackFromARecordWithoutAnEnd) {
  for (const char byte : {'\n', '\0'}) {
    Endless record(byte);
    const auto text = ReadRecordText(record, {.fields = 1000, .bytes = 100000});
    EXPECT_EQ(text.has_value(), byte == '\n');
    EXPECT_LE(record.Given(), 300000U);
  }
}

}  // namespace

}  // namespace ptick
