#include "platform/linux/record_files.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/unique_fd.h"
#include "support/forked.h"
#include "support/temp_directory.h"

namespace ptick {

namespace {

namespace fs = std::filesystem;
using testing::TempDirectory;

// The text of a record, nothing when it cannot be opened or read to its end.
std::optional<std::string> ReadAll(const std::unique_ptr<RecordReader>& reader) {
  if (reader == nullptr) {
    return std::nullopt;
  }
  std::string text;
  std::array<char, 1000> block = {};
  while (const std::optional<std::size_t> count = reader->Read(block)) {
    if (*count == 0) {
      return text;
    }
    text.append(block.data(), *count);
  }
  return std::nullopt;
}

std::optional<std::string> ReadRecord(const std::string& directory, std::string_view name) {
  const auto file = OpenRecordFile(directory);
  return ReadAll(file == nullptr ? nullptr : file->OpenRecord(name));
}

TEST(RecordFilesTest, ReadsARecordToItsEnd) {
  const TempDirectory directory;
  for (const std::string& text : {std::string(), std::string("one\ntwo\n"),
                                  std::string("\0\xfe\r", 3), std::string(200000, 'x')}) {
    directory.Write("record", text);
    EXPECT_EQ(ReadRecord(directory.Path(), "record"), text) << text.substr(0, 20);
  }
}

TEST(RecordFilesTest, FillsABlockFromTheFront) {
  const TempDirectory directory;
  directory.Write("record", "abcdef");
  const auto reader = OpenRecordFile(directory.Path().native())->OpenRecord("record");
  std::string block = "....";
  EXPECT_EQ(reader->Read(block), 4U);
  EXPECT_EQ(block, "abcd");
  EXPECT_EQ(reader->Read(block), 2U);
  EXPECT_EQ(block, "efcd");
  EXPECT_EQ(reader->Read(block), 0U);
  EXPECT_EQ(reader->Read(block), 0U);
}

TEST(RecordFilesTest, OpensDirectoriesOnly) {
  const TempDirectory directory;
  directory.Write("plain", "text");
  fs::create_directory_symlink(directory.Path(), directory / "link");
  EXPECT_NE(OpenRecordFile(directory.Path().native()), nullptr);
  EXPECT_NE(OpenRecordFile((directory / "link").native()), nullptr);
  EXPECT_NE(OpenRecordFile("."), nullptr);
  EXPECT_NE(OpenRecordFile("/"), nullptr);
  const std::string path = directory.Path();
  for (const std::string& name :
       {std::string(), path + "/plain", path + "/missing", path + std::string("\0x", 2)}) {
    EXPECT_EQ(OpenRecordFile(name), nullptr) << name;
  }
}

TEST(RecordFilesTest, RefusesNamesThatCouldLeaveTheDirectory) {
  const TempDirectory directory;
  fs::create_directory(directory / "sub");
  directory.Write("record", "text");
  directory.Write("sub/inner", "text");
  for (const std::string& name :
       {std::string(), std::string("."), std::string(".."), std::string("sub"),
        std::string("sub/inner"), std::string("./record"), std::string("record/"),
        std::string("/etc/passwd"), std::string("record\0", 7), std::string("missing")}) {
    EXPECT_EQ(ReadRecord(directory.Path(), name), std::nullopt) << name;
  }
  for (const std::string name : {"...", "..record", " ", "\xfe", "-"}) {
    directory.Write(name, name);
    EXPECT_EQ(ReadRecord(directory.Path(), name), name);
  }
}

TEST(RecordFilesTest, FollowsLinksToRecordsOnly) {
  const TempDirectory directory;
  directory.Write("record", "text");
  fs::create_symlink("record", directory / "link");
  fs::create_symlink("link", directory / "link_to_link");
  fs::create_symlink("nowhere", directory / "dangling");
  fs::create_symlink("loop", directory / "loop");
  fs::create_symlink("/", directory / "to_directory");
  EXPECT_EQ(ReadRecord(directory.Path(), "link"), "text");
  EXPECT_EQ(ReadRecord(directory.Path(), "link_to_link"), "text");
  for (const std::string name : {"dangling", "loop", "to_directory"}) {
    EXPECT_EQ(ReadRecord(directory.Path(), name), std::nullopt) << name;
  }
}

TEST(RecordFilesTest, ReadsAPipeThroughItsDescriptorName) {
  std::array<int, 2> ends = {};
  ASSERT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
  const UniqueFd read_end(ends[0]);
  UniqueFd write_end(ends[1]);
  ASSERT_EQ(::write(write_end.Get(), "piped\n", 6), 6);
  write_end.Close();
  EXPECT_EQ(ReadRecord("/dev/fd", std::to_string(read_end.Get())), "piped\n");
}

TEST(RecordFilesTest, ReadsANamedPipe) {
  const TempDirectory directory;
  directory.MakeFifo("fifo");
  const pid_t writer = testing::StartForked([&directory] {
    directory.Write("fifo", std::string(100000, 'p'));
    return 0;
  });
  EXPECT_EQ(ReadRecord(directory.Path(), "fifo"), std::string(100000, 'p'));
  EXPECT_EQ(testing::AwaitEnd(writer), 0);
}

TEST(RecordFilesTest, ReadsADevice) { EXPECT_EQ(ReadRecord("/dev", "null"), ""); }

UniqueFd BindSocket(const fs::path& path) {
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  path.native().copy(std::begin(address.sun_path), sizeof(address.sun_path) - 1);
  UniqueFd socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): how the system takes addresses
  EXPECT_EQ(::bind(socket.Get(), reinterpret_cast<sockaddr*>(&address), sizeof(address)), 0);
  return socket;
}

TEST(RecordFilesTest, RefusesASocket) {
  const TempDirectory directory;
  const UniqueFd socket = BindSocket(directory / "socket");
  EXPECT_EQ(ReadRecord(directory.Path(), "socket"), std::nullopt);
}

TEST(RecordFilesTest, OpensRegularFilesWhereNothingElseIsWanted) {
  const TempDirectory directory;
  directory.Write("plain", "text");
  directory.Write("empty", "");
  directory.MakeFifo("fifo");
  const UniqueFd socket = BindSocket(directory / "socket");
  fs::create_directory(directory / "folder");
  for (const std::string target : {"plain", "fifo", "folder", "nowhere", "/dev/zero", "/dev/tty"}) {
    fs::create_symlink(target, directory / ("to_" + fs::path(target).filename().native()));
  }
  struct Row {
    std::string name;
    std::optional<std::string> want;
    int error = 0;
  };
  const std::vector<Row> rows = {
      {"plain", "text"},
      {"empty", ""},
      {"to_plain", "text"},
      {"fifo", std::nullopt, EINVAL},
      {"to_fifo", std::nullopt, EINVAL},
      {"socket", std::nullopt, EINVAL},
      {"to_zero", std::nullopt, EINVAL},
      {"to_tty", std::nullopt, EINVAL},
      {"folder", std::nullopt, EISDIR},
      {"to_folder", std::nullopt, EISDIR},
      {"missing", std::nullopt, ENOENT},
      {"to_nowhere", std::nullopt, ENOENT},
      {"folder/inner", std::nullopt, ENOENT},
      {"", std::nullopt, ENOENT},
      {".", std::nullopt, EISDIR},
      {"..", std::nullopt, EISDIR},
  };
  const auto file = OpenRecordFile(directory.Path().native());
  for (const Row& row : rows) {
    int error = 0;
    const auto reader = file->OpenRegularRecord(row.name, &error);
    EXPECT_EQ(ReadAll(reader), row.want) << row.name;
    EXPECT_EQ(error, row.error) << row.name;
    EXPECT_EQ(ReadAll(file->OpenRegularRecord(row.name)), row.want) << row.name;
    EXPECT_TRUE(reader == nullptr || reader->CanBeReadAgain()) << row.name;
  }
}

// A writer that waits for a reader goes on waiting: it would be killed when the reader leaves.
TEST(RecordFilesTest, LeavesTheWriterOfAPipeAlone) {
  const TempDirectory directory;
  directory.MakeFifo("fifo");
  const pid_t writer = testing::StartForked([&directory] {
    directory.Write("fifo", std::string(100000, 'p'));
    return 0;
  });
  const auto file = OpenRecordFile(directory.Path().native());
  for (int n = 0; n < 1000; ++n) {
    EXPECT_EQ(file->OpenRegularRecord("fifo"), nullptr);
  }
  EXPECT_EQ(ReadRecord(directory.Path(), "fifo"), std::string(100000, 'p'));
  EXPECT_EQ(testing::AwaitEnd(writer), 0);
}

TEST(RecordFilesTest, TellsAReadThatFails) {
  // The first page of a process's memory is never there.
  const auto reader = OpenRecordFile("/proc/self")->OpenRecord("mem");
  ASSERT_NE(reader, nullptr);
  std::array<char, 10> block = {};
  EXPECT_EQ(reader->Read(block), std::nullopt);
}

TEST(RecordFilesTest, StaysWithTheDirectoryThatWasOpened) {
  const TempDirectory directory;
  fs::create_directory(directory / "before");
  directory.Write("before/record", "text");
  const auto file = OpenRecordFile((directory / "before").native());
  fs::rename(directory / "before", directory / "after");
  EXPECT_NE(file->OpenRecord("record"), nullptr);
}

TEST(RecordFilesTest, OpensARecordByItsPath) {
  const TempDirectory directory;
  const std::string path = directory.Write("record", "text");
  EXPECT_EQ(ReadAll(OpenPath(path)), "text");
  EXPECT_TRUE(OpenPath(path)->CanBeReadAgain());
  struct Row {
    std::string path;
    int error;
  };
  const std::vector<Row> rows = {
      {"", ENOENT},
      {directory / "none", ENOENT},
      {path + "/", ENOTDIR},
      {std::string("/dev/null\0", 10), ENOENT},
      {directory.Path(), EISDIR},
  };
  for (const Row& row : rows) {
    int error = 0;
    EXPECT_EQ(OpenPath(row.path, &error), nullptr) << row.path;
    EXPECT_EQ(error, row.error) << row.path;
  }
}

TEST(RecordFilesTest, ReadsOnFromADescriptor) {
  const TempDirectory directory;
  const UniqueFd file(::open(directory.Write("record", "text").c_str(), O_RDONLY | O_CLOEXEC));
  ASSERT_EQ(::lseek(file.Get(), 2, SEEK_SET), 2);
  const std::unique_ptr<RecordReader> reader = ReadOpenFile(file.Get());
  EXPECT_FALSE(reader->CanBeReadAgain());
  EXPECT_EQ(ReadAll(reader), "xt");
  EXPECT_EQ(ReadAll(ReadOpenFile(file.Get())), "");
  int error = 0;
  EXPECT_EQ(ReadOpenFile(-1, &error), nullptr);
  EXPECT_EQ(error, EBADF);
  const UniqueFd folder(::open(directory.Path().c_str(), O_RDONLY | O_CLOEXEC));
  EXPECT_EQ(ReadOpenFile(folder.Get(), &error), nullptr);
  EXPECT_EQ(error, EISDIR);
}

}  // namespace

}  // namespace ptick
