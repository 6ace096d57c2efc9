#include "output/output.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "output/stop.h"
#include "support/memory_platform.h"

namespace ptick {

namespace {

using namespace std::string_view_literals;

/// What a run of output was stopped with; nothing when it was not.
std::optional<int> StopOf(const std::function<void()>& print) {
  try {
    print();
  } catch (const Stop& stop) {
    return stop.status;
  }
  return std::nullopt;
}

TEST(Output, PrintsLinesAsTheyAre) {
  const std::vector<std::string_view> lines = {
      "a line", "", "  blanks  ", "\t\x1b[2J\x7f\r", "\xff\xfe\xfd\xfc", "\0"sv, "two\nlines"};
  MemoryPlatform platform;
  Output output(platform, "ptick");
  std::string want;
  for (const std::string_view line : lines) {
    output.PrintLine(line);
    want += std::string(line) + "\n";
  }
  output.Finish();
  EXPECT_EQ(platform.printed, want);
  EXPECT_EQ(platform.on_terminal, "");
}

TEST(Output, WritesNothingWhenNothingIsPrinted) {
  MemoryPlatform platform;
  platform.output_error = ENOSPC;
  Output output(platform, "ptick");
  EXPECT_EQ(StopOf([&] {
              output.Finish();
              output.Close();
            }),
            std::nullopt);
  EXPECT_TRUE(platform.transcript.empty());
}

TEST(Output, HoldsLinesOfAnySize) {
  for (const std::size_t size : {1000U, 262143U, 262144U, 262145U, 1000000U}) {
    MemoryPlatform platform;
    Output output(platform, "ptick");
    output.PrintLine("before");
    output.PrintLine(std::string(size, 'x'));
    output.PrintLine("after");
    output.Finish();
    EXPECT_TRUE(platform.printed == "before\n" + std::string(size, 'x') + "\nafter\n") << size;
  }
}

TEST(Output, HoldsAnyNumberOfLines) {
  MemoryPlatform platform;
  Output output(platform, "ptick");
  std::string want;
  for (int n = 0; n < 100000; ++n) {
    const std::string line = "line " + std::to_string(n * 37);
    output.PrintLine(line);
    want += line + "\n";
  }
  output.Finish();
  EXPECT_TRUE(platform.printed == want);
}

TEST(Output, TakesLinesLaidOutInPlace) {
  for (const bool terminal : {false, true}) {
    MemoryPlatform platform;
    platform.output_is_terminal = terminal;
    Output output(platform, "ptick");
    std::string want;
    for (std::size_t size = 0; size <= 2000; ++size) {
      const std::string line(size, static_cast<char>('a' + size % 26));
      char* room = output.LineRoom(2000);
      output.EndLineAt(std::copy(line.begin(), line.end(), room));
      want += line + "\n";
    }
    output.Finish();
    EXPECT_TRUE(platform.printed == want) << terminal;
  }
}

TEST(Output, HasItsHeadingOnceInFrontOfTheFirstLine) {
  MemoryPlatform platform;
  platform.size.rows = 5;  // nobody's: this is no terminal
  platform.keyboard = true;
  Output output(platform, "ptick");
  output.SetHeading({"A title with 'PL' and 'L'  ", "Columns 'PL'"});
  std::string want = "A title with 'PL' and 'L'   Page 1\nColumns 'PL'\n";
  for (int n = 0; n < 100; ++n) {
    output.PrintLine(std::to_string(n));
    want += std::to_string(n) + "\n";
  }
  output.Finish();
  EXPECT_EQ(platform.printed, want);
  EXPECT_TRUE(platform.prompts.empty());
}

TEST(Output, HasItsHeadingWhenThereIsNothingToShow) {
  for (const bool terminal : {false, true}) {
    MemoryPlatform platform;
    platform.output_is_terminal = platform.keyboard = terminal;
    Output output(platform, "ptick");
    output.SetHeading({"Title", "Columns"});
    output.Finish();
    EXPECT_EQ(platform.printed, "Title Page 1\nColumns\n") << terminal;
    EXPECT_TRUE(platform.prompts.empty());
  }
}

TEST(Output, AddsNothingToARunThatStopsEarly) {
  MemoryPlatform platform;
  Output output(platform, "ptick");
  output.SetHeading({"Title", "Columns"});
  output.Close();
  EXPECT_EQ(platform.printed, "");
  Output started(platform, "ptick");
  started.SetHeading({"Title", "Columns"});
  started.PrintLine("a line");
  started.Close();
  EXPECT_EQ(platform.printed, "Title Page 1\nColumns\na line\n");
}

TEST(Output, KeepsTheOrderOfOutputAndTerminal) {
  MemoryPlatform platform;
  Output output(platform, "ptick");
  output.PrintTerminal("1");
  output.PrintLine("2");
  output.PrintLine("3");
  output.PrintTerminal("4");
  output.PrintMessage("5");
  output.PrintLine("6");
  output.PrintLine("7");
  output.PrintMessage("8");
  output.PrintTerminal("9");
  output.PrintLine("10");
  output.Finish();
  using Part = std::pair<Stream, std::string>;
  EXPECT_EQ(platform.transcript, (std::vector<Part>{
                                     {Stream::kDiagnostics, "1\n"},
                                     {Stream::kOutput, "2\n3\n"},
                                     {Stream::kDiagnostics, "4\nptick: 5\n"},
                                     {Stream::kOutput, "6\n7\n"},
                                     {Stream::kDiagnostics, "ptick: 8\n9\n"},
                                     {Stream::kOutput, "10\n"},
                                 }));
}

TEST(Output, IsHarmlessOnATerminalAndAsItIsElsewhere) {
  // NOLINTNEXTLINE(misc-misleading-bidirectional): that is what is replaced
  std::string all = "\u202E\u009B\u4E2D";
  std::string shown = "??\u4E2D";
  for (int byte = 0; byte < 256; ++byte) {
    all += static_cast<char>(byte);
    const bool control = (byte < 32 && byte != '\n' && byte != '\t') || byte == 127;
    const bool high_control = byte >= 0x80 && byte <= 0x9F;
    shown += control || high_control ? '?' : static_cast<char>(byte);
  }
  for (const bool output_is : {false, true}) {
    for (const bool terminal_is : {false, true}) {
      MemoryPlatform platform;
      platform.output_is_terminal = output_is;
      platform.diagnostics_are_on_terminal = terminal_is;
      Output output(platform, "ptick");
      output.SetHeading({"Title" + all, "Columns" + all});
      output.PrintLine(all);
      output.PrintLine("x" + all);
      output.PrintTerminal(all);
      output.Finish();
      const std::string& out = output_is ? shown : all;
      std::string want = "Title" + out;
      want.append(" Page 1\nColumns").append(out).append("\n");
      want.append(out).append("\nx").append(out).append("\n");
      EXPECT_EQ(platform.printed, want);
      EXPECT_EQ(platform.on_terminal, (terminal_is ? shown : all) + "\n");
    }
  }
}

TEST(Output, StopsWhenItCannotWrite) {
  struct Row {
    int error;
    int want_status;
    std::string_view want_terminal;
  };
  const std::vector<Row> rows = {
      {ENOSPC, 1, "ptick: cannot write: No space left on device\n"},
      {EIO, 1, "ptick: cannot write: Input/output error\n"},
      {EBADF, 1, "ptick: cannot write: Bad file descriptor\n"},
  };
  const std::vector<std::function<void(Output&)>> writers = {
      [](Output& output) { output.Finish(); },
      [](Output& output) { output.Close(); },
      [](Output& output) { output.PrintTerminal("never said"); },
      [](Output& output) { output.PrintLine(std::string(300000, 'x')); },
  };
  for (const Row& row : rows) {
    for (std::size_t i = 0; i < writers.size(); ++i) {
      SCOPED_TRACE(std::to_string(row.error) + " in writer " + std::to_string(i));
      MemoryPlatform platform;
      platform.output_error = row.error;
      Output output(platform, "ptick");
      output.PrintLine("a line");
      EXPECT_EQ(StopOf([&] { writers[i](output); }), row.want_status);
      EXPECT_EQ(platform.on_terminal, row.want_terminal);
      // Closing after it tries nothing and says nothing again.
      EXPECT_EQ(StopOf([&] { output.Close(); }), std::nullopt);
      EXPECT_EQ(platform.on_terminal, row.want_terminal);
    }
  }
}

// A reader that has closed the pipe wants no more: printing on is pointless, and ends the run
// quietly. What the run came to, and its messages, are not touched by it.
TEST(Output, IsStoppedByAClosedPipeOnlyWhenMoreIsPrinted) {
  struct Row {
    std::function<void(Output&)> print;
    std::optional<int> want_stopped;
    std::string_view want_terminal;
  };
  const std::vector<Row> rows = {
      {[](Output& output) { output.Finish(); }, std::nullopt, ""},
      {[](Output& output) { output.Close(); }, std::nullopt, ""},
      {[](Output& output) { output.PrintTerminal("said"); }, std::nullopt, "said\n"},
      {[](Output& output) { output.PrintMessage("x"); }, std::nullopt, "ptick: x\n"},
      {[](Output& output) { output.PrintLine(std::string(300000, 'x')); }, 0, ""},
  };
  for (std::size_t i = 0; i < rows.size(); ++i) {
    MemoryPlatform platform;
    platform.output_error = EPIPE;
    Output output(platform, "ptick");
    output.PrintLine("a line");
    EXPECT_EQ(StopOf([&] { rows[i].print(output); }), rows[i].want_stopped) << i;
    EXPECT_EQ(StopOf([&] { output.Close(); }), std::nullopt) << i;
    EXPECT_EQ(platform.on_terminal, rows[i].want_terminal) << i;
  }
}

TEST(Output, GoesOnWhenTheTerminalCannotBeWritten) {
  MemoryPlatform platform;
  platform.diagnostics_error = EIO;
  Output output(platform, "ptick");
  EXPECT_EQ(StopOf([&] {
              output.PrintTerminal("lost");
              output.PrintLine("kept");
              output.Finish();
            }),
            std::nullopt);
  EXPECT_EQ(platform.printed, "kept\n");
}

}  // namespace

}  // namespace ptick
