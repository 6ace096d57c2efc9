// Records that can be read at any place.

#include <fcntl.h>
#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <memory>
#include <optional>
#include <string_view>

#include "platform/linux/record_files.h"
#include "platform/linux/unique_fd.h"
#include "support/temp_directory.h"

namespace ptick {

namespace {

using testing::TempDirectory;

TEST(RecordPlaces, ReadsARegularFileAtAnyPlace) {
  const TempDirectory directory;
  const auto reader = OpenPath(directory.Write("record", "abcdef").native());
  EXPECT_EQ(reader->Size(), 6U);
  std::array<char, 4> block = {};
  int error = 0;
  EXPECT_EQ(reader->ReadAt(3, block, error), 3U);
  EXPECT_EQ(std::string_view(block.data(), 3), "def");
  EXPECT_EQ(reader->ReadAt(0, block, error), 4U);
  EXPECT_EQ(std::string_view(block.data(), 4), "abcd");
  EXPECT_EQ(reader->ReadAt(6, block, error), 0U);
  EXPECT_EQ(reader->ReadAt(600, block, error), 0U);
  EXPECT_EQ(error, 0);
  EXPECT_EQ(reader->Read(block), 4U);
  EXPECT_EQ(std::string_view(block.data(), 4), "abcd") << "front to back it is where it was";
  directory.Write("record", "abcdefgh");
  EXPECT_EQ(reader->Size(), 8U);
}

TEST(RecordPlaces, ReadsWhatIsNoRegularFileFrontToBackAlone) {
  const TempDirectory directory;
  const UniqueFd file(::open(directory.Write("record", "text").c_str(), O_RDONLY | O_CLOEXEC));
  for (const auto& reader : {OpenPath("/dev/null"), ReadOpenFile(file.Get())}) {
    EXPECT_EQ(reader->Size(), std::nullopt);
  }
}

TEST(RecordPlaces, SaysWhyAPlaceCannotBeRead) {
  std::array<char, 4> block = {};
  int error = 0;
  EXPECT_EQ(OpenPath("/proc/self/mem")->ReadAt(0, block, error), std::nullopt);
  EXPECT_EQ(error, EIO);
}

}  // namespace

}  // namespace ptick
