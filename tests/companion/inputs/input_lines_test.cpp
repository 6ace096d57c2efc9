// The lines of an input, and what is told of reading it.

#include "companion/inputs/input_lines.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "companion/support/no_status_line.h"
#include "support/text_record.h"
#include "value/byte_buffer.h"

namespace ptick::companion {

namespace {

using ptick::testing::TextRecord;

/// Remembers what it shows.
class ShownLine final : public StatusLine {
 public:
  bool IsSeen() const override { return true; }
  void Show(std::string_view text) override { shown.emplace_back(text); }
  void Erase() override { ++erased; }

  std::vector<std::string> shown;
  int erased = 0;
};

TEST(InputLines, TellTheProgressOfTheBytesRead) {
  ShownLine line;
  {
    std::chrono::steady_clock::time_point now;
    Progress progress(
        line, [] { return std::uint64_t{20}; }, [&now] { return now += std::chrono::seconds(2); });
    InputLines lines(std::make_unique<TextRecord>("12345\n789\n", 5), "run", progress);
    while (!lines.Next().empty()) {
    }
  }
  ASSERT_EQ(line.shown.size(), 3U);
  EXPECT_EQ(line.shown[0].substr(0, 28), "5 bytes of 20 bytes read, 25");
  EXPECT_EQ(line.shown[1].substr(0, 29), "10 bytes of 20 bytes read, 50");
  EXPECT_EQ(line.erased, 1);
}

TEST(InputLines, AreTheSameInOtherMemory) {
  testing::NoProgress progress;
  const std::string text = "one\ntwo\xfethree\nfour";
  for (const std::size_t piece : {std::size_t{1}, std::size_t{6}, std::size_t{100}}) {
    InputLines lines(std::make_unique<TextRecord>(text, piece), "run", progress.Get(), 100);
    std::vector<ByteBuffer> memory(30);
    std::string all;
    for (ByteBuffer& block : memory) {
      all += lines.NextInto(block);
    }
    EXPECT_EQ(all, "one\ntwo\nthree\nfour\n") << piece;
  }
}

TEST(InputLines, EndInTroubleWhereReadingFails) {
  testing::NoProgress progress;
  InputLines lines(std::make_unique<TextRecord>("one\ntwo", 4, TextRecord::End::kFails), "run",
                   progress.Get());
  EXPECT_EQ(lines.Next(), "one\n");
  try {
    lines.Next();
    FAIL() << "read";
  } catch (const Trouble& trouble) {
    EXPECT_EQ(MessageLine("p", trouble.What()), "p: run: Input/output error\n");
  }
}

}  // namespace

}  // namespace ptick::companion
