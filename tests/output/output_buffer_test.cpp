#include "output/output_buffer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "output/stop.h"
#include "support/memory_console.h"

namespace ptick {

namespace {

class OutputBufferTest : public ::testing::Test {
 protected:
  MemoryConsole console_;
  Diagnostics diagnostics_{console_, "ptick"};
  OutputBuffer buffer_{console_, diagnostics_};
};

TEST_F(OutputBufferTest, WritesWhenItIsAskedTo) {
  buffer_.Flush();
  EXPECT_TRUE(console_.transcript.empty());
  buffer_.Append("one ");
  buffer_.Append("");
  buffer_.Append("two");
  EXPECT_EQ(console_.printed, "");
  buffer_.Flush();
  buffer_.Flush();
  EXPECT_EQ(console_.printed, "one two");
}

TEST_F(OutputBufferTest, WritesWhenThereIsNoMoreRoom) {
  buffer_.Append("first");
  const std::size_t room = buffer_.Room();
  EXPECT_GT(room, 100000U);
  buffer_.Reserve(room);
  EXPECT_EQ(console_.printed, "");
  buffer_.Reserve(room + 1);
  EXPECT_EQ(console_.printed, "first");
  EXPECT_GE(buffer_.Room(), room + 1);
}

TEST_F(OutputBufferTest, GivesRoomForAnySize) {
  for (const std::size_t size : {std::size_t{1}, std::size_t{262144}, std::size_t{5000000}}) {
    console_.printed.clear();
    buffer_.Reserve(size);
    ASSERT_GE(buffer_.Room(), size);
    std::fill_n(buffer_.End(), size, 'x');
    buffer_.SetEnd(buffer_.End() + size);
    buffer_.Flush();
    EXPECT_TRUE(console_.printed == std::string(size, 'x')) << size;
  }
}

TEST_F(OutputBufferTest, DropsWhatCannotBeWrittenAndSaysSoOnce) {
  struct Row {
    int error;
    int want_status;
    std::string want_terminal;
  };
  const std::vector<Row> rows = {{ENOSPC, 1, "ptick: cannot write: No space left on device\n"},
                                 {EPIPE, 0, ""}};
  for (const Row& row : rows) {
    console_.on_terminal.clear();
    console_.output_error = row.error;
    buffer_.Append("lost");
    std::optional<int> status;
    try {
      buffer_.Reserve(buffer_.Room() + 1);
    } catch (const Stop& stop) {
      status = stop.status;
    }
    EXPECT_EQ(status, row.want_status) << row.error;
    console_.output_error = 0;
    buffer_.Flush();
    EXPECT_EQ(console_.printed, "") << row.error;
    EXPECT_EQ(console_.on_terminal, row.want_terminal) << row.error;
  }
}

}  // namespace

}  // namespace ptick
