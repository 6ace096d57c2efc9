// Inputs as the system has them.

#include "companion/linux/inputs.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "companion/problem.h"
#include "support/forked.h"
#include "support/temp_directory.h"

namespace ptick::companion {

namespace {

using ptick::testing::CheckForked;
using ptick::testing::TempDirectory;

std::string TextOf(const std::string& name) {
  const std::unique_ptr<RecordReader> reader = OpenInput(name);
  std::string text;
  std::array<char, 100> block = {};
  while (const std::optional<std::size_t> size = reader->Read(block)) {
    if (*size == 0) {
      return text;
    }
    text.append(block.data(), *size);
  }
  throw Trouble(name, reader->Error());
}

std::string ReasonFor(const std::string& name) {
  try {
    return "read: " + TextOf(name);
  } catch (const Trouble& trouble) {
    return MessageLine("p", trouble.What());
  }
}

TEST(Inputs, AreFilesAndDevices) {
  const TempDirectory folder;
  EXPECT_EQ(TextOf(folder.Write("file", "text")), "text");
  std::filesystem::create_symlink("file", folder / "link");
  EXPECT_EQ(TextOf(folder / "link"), "text");
  EXPECT_EQ(TextOf("/dev/null"), "");
}

TEST(Inputs, AreStandardInputAndDescriptors) {
  const TempDirectory folder;
  const std::string file = folder.Write("file", "text");
  EXPECT_EQ(CheckForked([&] {
              ::close(STDIN_FILENO);
              ASSERT_EQ(::open(file.c_str(), O_RDONLY), STDIN_FILENO);
              EXPECT_EQ(TextOf("-"), "text");
              EXPECT_EQ(TextOf("-"), "");  // read to its end before
              EXPECT_EQ(TextOf("/dev/stdin"), "text");
              std::array<int, 2> ends = {};
              ASSERT_EQ(::pipe(ends.data()), 0);
              ASSERT_EQ(::write(ends[1], "piped", 5), 5);
              ::close(ends[1]);
              EXPECT_EQ(TextOf("/dev/fd/" + std::to_string(ends[0])), "piped");
            }),
            0);
}

TEST(Inputs, AreRefusedWithTheReasonOfTheSystem) {
  const TempDirectory folder;
  struct Row {
    std::string name;
    std::string want;
  };
  const std::vector<Row> rows = {
      {"", "p: '': No such file or directory\n"},
      {folder / "none", "p: " + (folder / "none").string() + ": No such file or directory\n"},
      {folder.Path(), "p: " + folder.Path().string() + ": Is a directory\n"},
      {".", "p: .: Is a directory\n"},
      {std::string("/dev/null\0x", 11),
       "p: " + std::string("/dev/null\0x", 11) + ": No such file or directory\n"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(ReasonFor(row.name), row.want);
  }
  EXPECT_EQ(CheckForked([] {
              ::close(STDIN_FILENO);
              EXPECT_EQ(ReasonFor("-"), "p: standard input: Bad file descriptor\n");
              ASSERT_EQ(::open("/", O_RDONLY), STDIN_FILENO);
              EXPECT_EQ(ReasonFor("-"), "p: standard input: Is a directory\n");
            }),
            0);
}

}  // namespace

}  // namespace ptick::companion
