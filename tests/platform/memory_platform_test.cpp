#include "support/memory_platform.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>

namespace ptick {

namespace {

TEST(MemoryPlatformTest, ReadsARecordInBlocksOfTheSetSize) {
  for (const std::size_t block_size : {std::size_t{1}, std::size_t{3}, std::size_t{4096}}) {
    MemoryPlatform platform;
    platform.files["src"]["MAIN"].text = "first\nsecond\n";
    platform.block_size = block_size;
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
  platform.files["src"]["MAIN"] = {.text = "abcdef", .fails_after = 2};
  const auto reader = platform.OpenFile("src")->OpenRecord("MAIN");
  std::array<char, 8> block = {};
  EXPECT_EQ(reader->Read(block), 2U);
  EXPECT_EQ(reader->Read(block), std::nullopt);
}

TEST(MemoryPlatformTest, HasNoFilesAndRecordsButThoseSet) {
  MemoryPlatform platform;
  platform.files["src"]["MAIN"].text = "x";
  EXPECT_EQ(platform.OpenFile("other"), nullptr);
  const auto file = platform.OpenFile("src");
  for (const std::string name : {"", ".", "..", "SUB"}) {
    EXPECT_EQ(file->OpenRecord(name), nullptr) << name;
  }
  EXPECT_EQ(platform.opened_files, (std::vector<std::string>{"other", "src"}));
  EXPECT_EQ(platform.reads.size(), 4U);
}

TEST(MemoryPlatformTest, HasNoPipesWhereOnlyRegularFilesAreWanted) {
  MemoryPlatform platform;
  platform.files["src"]["MAIN"].text = "x";
  platform.files["src"]["PIPE"].is_pipe = true;
  const auto file = platform.OpenFile("src");
  EXPECT_NE(file->OpenRegularRecord("MAIN"), nullptr);
  EXPECT_NE(file->OpenRecord("PIPE"), nullptr);
  int error = 0;
  EXPECT_EQ(file->OpenRegularRecord("PIPE", &error), nullptr);
  EXPECT_EQ(error, EINVAL);
  EXPECT_EQ(file->OpenRegularRecord("NONE", &error), nullptr);
  EXPECT_EQ(error, ENOENT);
}

TEST(MemoryPlatformTest, KeepsTheOrderOfTheTwoStreams) {
  MemoryPlatform platform;
  platform.Write(Stream::kOutput, "a");
  platform.Write(Stream::kOutput, "b");
  platform.Write(Stream::kDiagnostics, "c");
  platform.Write(Stream::kOutput, "d");
  EXPECT_EQ(platform.printed, "abd");
  EXPECT_EQ(platform.on_terminal, "c");
  const std::vector<std::pair<Stream, std::string>> want = {
      {Stream::kOutput, "ab"}, {Stream::kDiagnostics, "c"}, {Stream::kOutput, "d"}};
  EXPECT_EQ(platform.transcript, want);
}

TEST(MemoryPlatformTest, RefusesBytesWithTheErrorSet) {
  MemoryPlatform platform;
  platform.output_error = ENOSPC;
  EXPECT_EQ(platform.Write(Stream::kOutput, "a"), ENOSPC);
  EXPECT_EQ(platform.Write(Stream::kDiagnostics, "b"), 0);
  EXPECT_EQ(platform.printed, "");
}

TEST(MemoryPlatformTest, GivesTheKeysThenTheEndOfInput) {
  MemoryPlatform platform;
  platform.keys = {'x', 'c', 'y', 'q', 'z'};
  platform.later_sizes = {{5, 20}};
  EXPECT_EQ(platform.Size().rows, 24);
  EXPECT_EQ(platform.AskForKey("first", "qc"), 'c');
  EXPECT_EQ(platform.Size().columns, 20);
  platform.Write(Stream::kOutput, "text");
  EXPECT_EQ(platform.AskForKey("second", "qc"), 'q');
  EXPECT_EQ(platform.AskForKey("third", "qc"), std::nullopt);
  EXPECT_EQ(platform.prompts, (std::vector<std::pair<std::string, std::size_t>>{
                                  {"first", 0}, {"second", 4}, {"third", 4}}));
}

TEST(MemoryPlatformTest, AnswersCommandsWithTheirFirstLine) {
  MemoryPlatform platform;
  platform.command_outputs["size a.so"] = "first\nsecond\n";
  platform.command_outputs["size b.so"] = "field\xfesecond\n";
  const FirstLines got =
      platform.CaptureFirstLines({{"size", "a.so"}, {"size", "b.so"}, {"size", "c.so"}});
  EXPECT_EQ(got.lines, (std::vector<std::string>{"first", "field", ""}));
  EXPECT_EQ(got.error, 0);
  EXPECT_EQ(platform.commands_run.size(), 3U);
}

TEST(MemoryPlatformTest, TellsTheFirstErrorOfCommands) {
  MemoryPlatform platform;
  platform.command_errors = {{"size b.so", EAGAIN}, {"size c.so", ENOMEM}};
  const FirstLines got =
      platform.CaptureFirstLines({{"size", "a.so"}, {"size", "b.so"}, {"size", "c.so"}});
  EXPECT_EQ(got.lines, std::vector<std::string>(3));
  EXPECT_EQ(got.error, EAGAIN);
}

TEST(MemoryPlatformTest, RecordsShellRuns) {
  MemoryPlatform platform;
  platform.shell_status = 2;
  EXPECT_EQ(platform.RunShell("dcopy > keys", "*\n"), 2);
  const std::vector<MemoryPlatform::ShellRun> want = {
      {.command_line = "dcopy > keys", .input = "*\n"}};
  EXPECT_EQ(platform.shell_runs, want);
}

TEST(MemoryPlatformTest, AnswersPortsWithTheirErrorNumber) {
  MemoryPlatform platform;
  platform.port_results = {{4, 0}, {5, 0}, {6, EAGAIN}, {9, 0}};
  EXPECT_EQ(platform.SendPortMessage(5, "TICKCTL:on"), 0);
  EXPECT_EQ(platform.SendPortMessage(6, "TICKCTL:on"), EAGAIN);
  EXPECT_EQ(platform.SendPortMessage(7, "TICKCTL:on"), ENOENT);
  EXPECT_EQ(platform.MonitorOn(5, "log", "all"), 0);
  EXPECT_EQ(platform.MonitorOff(6), EAGAIN);
  EXPECT_EQ(platform.ListeningPorts(5, 8), (std::vector<std::int64_t>{5, 6}));
  EXPECT_TRUE(platform.ListeningPorts(8, 5).empty());
  EXPECT_EQ(platform.port_calls,
            (std::vector<std::string>{"send 5 TICKCTL:on", "send 6 TICKCTL:on", "send 7 TICKCTL:on",
                                      "on 5 [log] [all]", "off 6", "list 5 8", "list 8 5"}));
}

}  // namespace

}  // namespace ptick
