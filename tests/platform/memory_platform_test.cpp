#include "support/memory_platform.h"

#include <gtest/gtest.h>

#include <array>

namespace ptick {
namespace {

TEST(MemoryPlatformTest, ReadsARecordInBlocksOfTheSetSize) {
  for (const std::size_t block_size : {std::size_t{1}, std::size_t{3}, std::size_t{4096}}) {
    MemoryPlatform platform;
    platform.Files["src"]["MAIN"].Text = "first\nsecond\n";
    platform.BlockSize = block_size;
    const auto reader = platform.OpenFile("src")->OpenRecord("MAIN");
    ASSERT_NE(reader, nullptr);
    std::string text;
    std::array<char, 8> block = {};
    while (const std::size_t count = reader->Read(block).value()) {
      EXPECT_LE(count, block_size);
      text.append(block.data(), count);
    }
    EXPECT_EQ(text, "first\nsecond\n") << block_size;
  }
}

TEST(MemoryPlatformTest, FailsAfterTheBytesGiven) {
  MemoryPlatform platform;
  platform.Files["src"]["MAIN"] = {.Text = "abcdef", .FailsAfter = 2};
  const auto reader = platform.OpenFile("src")->OpenRecord("MAIN");
  std::array<char, 8> block = {};
  EXPECT_EQ(reader->Read(block), 2U);
  EXPECT_EQ(reader->Read(block), std::nullopt);
}

TEST(MemoryPlatformTest, HasNoFilesAndRecordsButThoseSet) {
  MemoryPlatform platform;
  platform.Files["src"]["MAIN"].Text = "x";
  EXPECT_EQ(platform.OpenFile("other"), nullptr);
  const auto file = platform.OpenFile("src");
  for (const std::string name : {"", ".", "..", "SUB"}) {
    EXPECT_EQ(file->OpenRecord(name), nullptr) << name;
  }
  EXPECT_EQ(platform.OpenedFiles, (std::vector<std::string>{"other", "src"}));
  EXPECT_EQ(platform.Reads.size(), 4U);
}

TEST(MemoryPlatformTest, KeepsTheOrderOfTheTwoStreams) {
  MemoryPlatform platform;
  platform.Write(Stream::kOutput, "a");
  platform.Write(Stream::kOutput, "b");
  platform.Write(Stream::kTerminal, "c");
  platform.Write(Stream::kOutput, "d");
  EXPECT_EQ(platform.Output, "abd");
  EXPECT_EQ(platform.Terminal, "c");
  const std::vector<std::pair<Stream, std::string>> want = {
      {Stream::kOutput, "ab"}, {Stream::kTerminal, "c"}, {Stream::kOutput, "d"}};
  EXPECT_EQ(platform.Transcript, want);
}

TEST(MemoryPlatformTest, RefusesBytesWithTheErrorSet) {
  MemoryPlatform platform;
  platform.OutputError = ENOSPC;
  EXPECT_EQ(platform.Write(Stream::kOutput, "a"), ENOSPC);
  EXPECT_EQ(platform.Write(Stream::kTerminal, "b"), 0);
  EXPECT_EQ(platform.Output, "");
}

TEST(MemoryPlatformTest, GivesTheKeysThenTheEndOfInput) {
  MemoryPlatform platform;
  platform.Keys = {'c', 'q'};
  EXPECT_EQ(platform.ReadKey(), 'c');
  EXPECT_EQ(platform.ReadKey(), 'q');
  EXPECT_EQ(platform.ReadKey(), std::nullopt);
  EXPECT_EQ(platform.KeysAskedFor, 3);
}

TEST(MemoryPlatformTest, AnswersCommandsWithTheirFirstLine) {
  MemoryPlatform platform;
  platform.CommandOutputs["size a.so"] = "first\nsecond\n";
  std::vector<std::string> lines;
  platform.CaptureFirstLines({{"size", "a.so"}, {"size", "b.so"}},
                             [&](std::string_view line) { lines.emplace_back(line); });
  EXPECT_EQ(lines, (std::vector<std::string>{"first", ""}));
  EXPECT_EQ(platform.Commands.size(), 2U);
}

TEST(MemoryPlatformTest, RecordsShellRuns) {
  MemoryPlatform platform;
  platform.ShellStatus = 2;
  EXPECT_EQ(platform.RunShell("dcopy > keys", "*\n"), 2);
  const std::vector<MemoryPlatform::ShellRun> want = {
      {.CommandLine = "dcopy > keys", .Input = "*\n"}};
  EXPECT_EQ(platform.ShellRuns, want);
}

TEST(MemoryPlatformTest, AnswersPortsWithTheirErrorNumber) {
  MemoryPlatform platform;
  platform.PortErrors = {{5, 0}, {6, EAGAIN}};
  platform.Listening = {4, 5, 6, 9};
  EXPECT_EQ(platform.SendPortMessage(5, "TICKCTL:on"), 0);
  EXPECT_EQ(platform.SendPortMessage(6, "TICKCTL:on"), EAGAIN);
  EXPECT_EQ(platform.SendPortMessage(7, "TICKCTL:on"), ENOENT);
  EXPECT_EQ(platform.PortMessages.size(), 3U);
  EXPECT_EQ(platform.MonitorOn(5, "log", "all"), 0);
  EXPECT_EQ(platform.MonitorOff(6), EAGAIN);
  const std::vector<MemoryPlatform::MonitorCall> want = {
      {.On = true, .Port = 5, .File = "log", .Options = "all"}, {.On = false, .Port = 6}};
  EXPECT_EQ(platform.MonitorCalls, want);
  EXPECT_EQ(platform.ListeningPorts(5, 8), (std::vector<std::int64_t>{5, 6}));
  EXPECT_TRUE(platform.ListeningPorts(8, 5).empty());
}

}  // namespace
}  // namespace ptick
