#include "records/record_text.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
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

/// A file of one record, named "it".
class OneRecord final : public RecordFile {
 public:
  OneRecord(std::string text, std::size_t piece, TextRecord::End end)
      : text_(std::move(text)), piece_(piece), end_(end) {}

  std::unique_ptr<RecordReader> OpenRecord(std::string_view name, int* /*error*/) override {
    return name == "it" ? std::make_unique<TextRecord>(text_, piece_, end_) : nullptr;
  }

 private:
  std::string text_;
  std::size_t piece_;
  TextRecord::End end_;
};

TEST(ReadRecordText, ReadsToTheEndHoweverItComes) {
  std::string big;
  for (int line = 1; line <= 20000; ++line) {
    big += "line " + std::to_string(line) + "\n";
  }
  for (const std::size_t piece : {1U, 1000U, 10000000U}) {
    OneRecord file(big, piece, TextRecord::End::kReached);
    const std::optional<RecordText> record = ReadRecordText(file, "it");
    ASSERT_TRUE(record) << piece;
    EXPECT_EQ(record->FieldCount(), 20000U) << piece;
    EXPECT_EQ(record->ReadField(1), "line 1") << piece;
    EXPECT_EQ(record->ReadField(20000), "line 20000") << piece;
  }
}

TEST(ReadRecordText, ReadsAnEmptyRecord) {
  OneRecord file("", 1, TextRecord::End::kReached);
  const std::optional<RecordText> record = ReadRecordText(file, "it");
  ASSERT_TRUE(record);
  EXPECT_EQ(record->FieldCount(), 0U);
}

TEST(ReadRecordText, GivesNothingOfARecordThatCannotBeRead) {
  OneRecord missing("a\n", 100, TextRecord::End::kReached);
  EXPECT_FALSE(ReadRecordText(missing, "other"));
  OneRecord failing("a\n", 100, TextRecord::End::kFails);
  EXPECT_FALSE(ReadRecordText(failing, "it"));
  OneRecord failing_at_once("", 100, TextRecord::End::kFails);
  EXPECT_FALSE(ReadRecordText(failing_at_once, "it"));
}

}  // namespace
}  // namespace ptick
