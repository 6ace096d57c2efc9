#include "ptick_annotate/source_excerpt.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "support/memory_platform.h"
#include "support/text_record.h"

namespace ptick::companion {

namespace {

using ptick::testing::TextRecord;

std::vector<LineTicks> TicksOn(const std::vector<std::uint32_t>& lines) {
  std::vector<LineTicks> ticks;
  for (const std::uint32_t line : lines) {
    ticks.push_back({.line = line, .ticks = 1});
  }
  return ticks;
}

/// "1:one 2:two", or "none".
std::string Shown(const std::optional<SourceExcerpt>& excerpt) {
  if (!excerpt) {
    return "none";
  }
  std::string text;
  for (std::size_t n = 0; n < excerpt->Lines().size(); ++n) {
    text += (n == 0 ? "" : " ") + std::to_string(excerpt->Lines()[n]) + ":";
    text += excerpt->TextOf(n);
  }
  return text;
}

TEST(SourceExcerpt, HasTheLinesAroundThoseWithTicks) {
  MemoryPlatform platform;
  platform.files["src"]["A"].text = "a\nb\nc\nd\ne\nf\ng\nh";
  platform.files["src"]["EMPTY"].text = "";
  const SourceFolders folders(std::vector<std::string>{"src"}, platform);
  constexpr std::uint32_t kMax = 0xFFFFFFFF;
  struct Row {
    std::string program;
    std::vector<std::uint32_t> ticks;
    ExcerptOptions options;
    std::string want;
  };
  const std::vector<Row> rows = {
      {"A", {4}, {.context = 0}, "4:d"},
      {"A", {1, 4}, {.context = 1}, "1:a 2:b 3:c 4:d 5:e"},
      {"A", {2, 8}, {.context = 1}, "1:a 2:b 3:c 7:g 8:h"},
      {"A", {5}, {.context = kMax}, "1:a 2:b 3:c 4:d 5:e 6:f 7:g 8:h"},
      // Lines around one that the source does not have are not shown.
      {"A", {1, 9}, {.context = 1}, "1:a 2:b"},
      {"A", {9, kMax}, {.context = kMax}, ""},
      {"A", {}, {.context = 3}, ""},
      {"A", {}, {.is_whole = true}, "1:a 2:b 3:c 4:d 5:e 6:f 7:g 8:h"},
      {"EMPTY", {1}, {.is_whole = true}, ""},
      {"NONE", {1}, {}, "none"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Shown(SourceExcerpt::Find(row.program, TicksOn(row.ticks), folders, row.options)),
              row.want);
  }
}

TEST(SourceExcerpt, IsOfTheFirstSourceThatCanBeRead) {
  MemoryPlatform platform;
  platform.files["one"]["A"] = {.text = "lost\nlost\n", .fails_after = 7};
  platform.files["two"]["A"].text = "found\n";
  platform.files["three"]["A"].text = "late\nlater\n";
  const SourceFolders folders(std::vector<std::string>{"one", "two", "three"}, platform);
  const auto excerpt = SourceExcerpt::Find("A", TicksOn({1, 2}), folders, {});
  EXPECT_EQ(Shown(excerpt), "1:found");
  EXPECT_EQ(excerpt->Path(), "two/A");
  EXPECT_EQ(excerpt->SourceLines(), 1U);
}

/// A folder whose source is another one each time it is opened.
class ChangingFolder final : public RecordFile {
 public:
  explicit ChangingFolder(std::vector<std::string> texts) : texts_(std::move(texts)) {}

  std::unique_ptr<RecordReader> OpenRecord(std::string_view /*name*/, int* /*error*/) override {
    if (next_ == texts_.size()) {
      return nullptr;
    }
    return std::make_unique<TextRecord>(texts_[next_++]);
  }
  std::unique_ptr<RecordReader> OpenRegularRecord(std::string_view name, int* error) override {
    return OpenRecord(name, error);
  }

 private:
  std::vector<std::string> texts_;
  std::size_t next_ = 0;
};

class ChangingFiles final : public RecordFiles {
 public:
  explicit ChangingFiles(std::vector<std::string> texts) : texts_(std::move(texts)) {}
  std::unique_ptr<RecordFile> OpenFile(std::string_view /*name*/, int* /*error*/) override {
    return std::make_unique<ChangingFolder>(texts_);
  }

 private:
  std::vector<std::string> texts_;
};

TEST(SourceExcerpt, BearsASourceThatChangesMeanwhile) {
  struct Row {
    std::vector<std::string> texts;
    std::string want;
  };
  const std::vector<Row> rows = {
      {{"a\nb\n", "a\nb\nc\n"}, "1:a 2:b"},
      {{"a\nb\n", "a\n"}, "none"},
      {{"a\nb\n"}, "none"},
  };
  for (const Row& row : rows) {
    ChangingFiles files(row.texts);
    const SourceFolders folders(std::vector<std::string>{"src"}, files);
    EXPECT_EQ(Shown(SourceExcerpt::Find("A", TicksOn({2}), folders, {})), row.want);
  }
}

}  // namespace

}  // namespace ptick::companion
