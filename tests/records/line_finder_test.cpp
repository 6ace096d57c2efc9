#include "records/line_finder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "records/record_text.h"
#include "support/line_texts.h"
#include "support/text_record.h"

namespace ptick {

namespace {

using testing::LineTexts;
using testing::TextRecord;

using Lines = std::vector<std::uint32_t>;
using Texts = std::vector<std::string>;

Texts Find(std::string_view text, const Lines& lines, std::size_t block_size = 100) {
  TextRecord record{std::string(text)};
  LineFinder finder(block_size);
  LineTexts sink;
  const std::size_t found = finder.Find(record, lines, 0, sink);
  EXPECT_EQ(found, sink.texts.size()) << text;
  EXPECT_TRUE(sink.in_order) << text;
  return sink.texts;
}

TEST(LineFinder, FindsLinesByTheirNumbers) {
  struct Row {
    std::string_view text;
    Lines lines;
    Texts want;
  };
  const std::vector<Row> rows = {
      {"one\ntwo\nthree\n", {1}, {"one"}},
      {"one\ntwo\nthree\n", {2}, {"two"}},
      {"one\ntwo\nthree\n", {1, 3}, {"one", "three"}},
      {"one\ntwo\nthree\n", {1, 2, 3}, {"one", "two", "three"}},
      {"one\ntwo\nthree\n", {3, 4, 5}, {"three"}},
      {"one\ntwo\nthree\n", {4}, {}},
      {"one\ntwo\nthree\n", {4294967295}, {}},
      {"one\ntwo\nthree\n", {}, {}},
      {"one\ntwo\nthree", {3, 4}, {"three"}},
      {"one\xfetwo\nthree", {2, 3}, {"two", "three"}},
      {"one\n\nthree\n", {1, 2, 3}, {"one", "", "three"}},
      {"\n\n", {1, 2, 3}, {"", ""}},
      {"one\xfe", {2, 3}, {""}},  // a field mark is between two fields
      {"one\xfe\xfe", {1, 2, 3, 4}, {"one", "", ""}},
      {"\xfe", {1, 2, 3}, {"", ""}},
      {"one\xfe\n", {1, 2, 3}, {"one", ""}},
      {"", {1, 2}, {}},
      {"one\r\n", {1}, {"one\r"}},
  };
  for (const Row& row : rows) {
    for (const std::size_t block_size : {1U, 2U, 3U, 5U, 100U}) {
      EXPECT_EQ(Find(row.text, row.lines, block_size), row.want)
          << row.text << " by " << block_size;
    }
  }
}

TEST(LineFinder, GivesThemTheNumbersAskedFor) {
  TextRecord record("one\ntwo\nthree\n");
  LineTexts sink;
  sink.texts = {"before", "it"};
  EXPECT_EQ(LineFinder().Find(record, Lines{1, 3, 9}, 2, sink), 2U);
  EXPECT_EQ(sink.texts, (Texts{"before", "it", "one", "three"}));
}

TEST(LineFinder, FindsNothingInARecordThatCannotBeReadToItsEnd) {
  for (const std::string text : {"", "one\n", "one\ntwo\nthree\n", "one\ntw"}) {
    for (const Lines& lines : {Lines{1}, Lines{1, 2}, Lines{1, 2, 3, 4}, Lines{}}) {
      TextRecord record(text, 4, TextRecord::End::kFails);
      LineTexts sink;
      sink.texts = {"before"};
      EXPECT_EQ(LineFinder().Find(record, lines, 1, sink), 0U) << text;
      EXPECT_EQ(sink.texts, Texts{"before"}) << text;
    }
  }
}

TEST(LineFinder, MayBeUsedAgain) {
  LineFinder finder;
  for (const std::string text : {"one\ntwo", "three\nfour"}) {
    TextRecord record(text);
    LineTexts sink;
    finder.Find(record, Lines{2}, 0, sink);
    EXPECT_EQ(sink.texts, Texts{text.substr(text.find('\n') + 1)});
  }
}

/// Counts what it is given and keeps nothing.
class Counter final : public LineSink {
 public:
  void Take(std::size_t /*n*/, std::string_view piece) override {
    bytes += piece.size();
    largest_piece = std::max(largest_piece, piece.size());
  }
  void Forget(std::size_t /*n*/) override {}

  std::size_t bytes = 0;
  std::size_t largest_piece = 0;
};

TEST(LineFinder, TakesALineOfAnyLengthInPieces) {
  TextRecord record("short\n" + std::string(1000000, 'x') + "\nshort\n");
  Counter sink;
  EXPECT_EQ(LineFinder(1000).Find(record, Lines{2}, 0, sink), 1U);
  EXPECT_EQ(sink.bytes, 1000000U);
  EXPECT_LE(sink.largest_piece, 1000U);
}

// What the fields of the whole text are, in blocks and records of all sizes.
TEST(LineFinder, FindsWhatReadingTheWholeTextFinds) {
  std::mt19937 random(1);
  for (int round = 0; round < 2000; ++round) {
    std::string text;
    const std::size_t size = random() % 300;
    const std::size_t rare = 2 + random() % 40;
    for (std::size_t n = 0; n < size; ++n) {
      text += random() % rare != 0 ? 'x' : "\n\xfe"[random() % 2];
    }
    Lines lines;
    for (std::uint32_t line = 1; line < 60; line += 1 + static_cast<std::uint32_t>(random() % 8)) {
      lines.push_back(line);
    }
    const RecordText whole(text);
    Texts want;
    for (const std::uint32_t line : lines) {
      if (const std::optional<std::string_view> field = whole.ReadField(line)) {
        want.emplace_back(*field);
      }
    }
    ASSERT_EQ(Find(text, lines, 1 + random() % 100), want) << text;
  }
}

}  // namespace

}  // namespace ptick
