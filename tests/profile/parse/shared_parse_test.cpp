#include "profile/parse/shared_parse.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include "records/line_blocks.h"
#include "support/text_record.h"

namespace ptick {

namespace {

using testing::TextRecord;

/// A record that is of another size than it says.
class Missized final : public RecordReader {
 public:
  Missized(std::string text, std::uint64_t size, TextRecord::End end = TextRecord::End::kReached)
      : text_(std::move(text), 1000, end), size_(size) {}

  std::optional<std::size_t> Read(std::span<char> block) override { return text_.Read(block); }
  std::optional<std::uint64_t> Size() const override { return size_; }
  std::optional<std::size_t> ReadAt(std::uint64_t place, std::span<char> block,
                                    int& error) const override {
    return text_.ReadAt(place, block, error);
  }

 private:
  TextRecord text_;
  std::uint64_t size_;
};

std::string TraceLines(int count) {
  std::string text;
  for (int line = 0; line < count; ++line) {
    text += "PROFILE:trace\tA\t" + std::to_string(line) + "\t1\n";
  }
  return text;
}

ReadOptions ByThreads(std::size_t bytes_alone) {
  ReadOptions options;
  options.threads = {.threads = 3,
                     .bytes_alone = bytes_alone,
                     .block_size = 50,
                     .smallest_range = 70,
                     .largest_range = 70};
  return options;
}

TEST(SharedParse, ReadsARecordToItsEndWhateverItsSizeSays) {
  const std::string text = TraceLines(200);
  for (const std::uint64_t size : {std::uint64_t{0}, std::uint64_t{1}, std::uint64_t{1000},
                                   std::uint64_t{text.size()}, std::uint64_t{text.size() + 5000}}) {
    for (const std::size_t bytes_alone : {std::size_t{0}, std::size_t{500}}) {
      RecordBlocks lines(std::make_unique<Missized>(text, size), 50);
      ProfileTables tables;
      EXPECT_EQ(ParseRecordLines(lines, ByThreads(bytes_alone), tables), std::nullopt);
      EXPECT_EQ(tables.Details.CountSmall(), 200U) << size << ", " << bytes_alone << " alone";
    }
  }
}

TEST(SharedParse, SaysThatReadingHasFailedWhateverTheSizeSays) {
  for (const std::uint64_t size : {std::uint64_t{0}, std::uint64_t{1000}}) {
    for (const int count : {0, 200}) {
      RecordBlocks lines(
          std::make_unique<Missized>(TraceLines(count), size, TextRecord::End::kFails), 50);
      ProfileTables tables;
      const auto problem = ParseRecordLines(lines, ByThreads(0), tables);
      ASSERT_NE(problem, std::nullopt) << size << ", " << count << " lines";
      EXPECT_EQ(problem->kind, ReadProblem::Kind::kCannotReadRecord);
      EXPECT_EQ(problem->error, TextRecord::kErrorAt);
    }
  }
}

}  // namespace

}  // namespace ptick
