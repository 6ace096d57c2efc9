#include "companion/linux/result_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "companion/support/folder.h"
#include "companion/support/result_file_fixture.h"
#include "support/forked.h"

namespace ptick::companion {

namespace {

namespace fs = std::filesystem;
using ptick::testing::CheckForked;
using testing::ModeOf;
using testing::NamesIn;

class ResultFileTest : public testing::ResultFileFixture {};

using Names = std::vector<std::string>;

TEST_F(ResultFileTest, IsThereWhenFinished) {
  {
    ResultFile result = Open(Folder() / "out");
    result.Write("one ");
    result.WriteControl("two");
    const Names during = NamesIn(Folder().Path());
    ASSERT_EQ(during.size(), 1U);
    EXPECT_TRUE(during[0].starts_with(".ptick-sample.")) << during[0];
    result.Finish();
    EXPECT_EQ(Folder().Read("out"), "one two");
    EXPECT_EQ(NamesIn(Folder().Path()), Names{"out"});
  }
  EXPECT_EQ(Folder().Read("out"), "one two");
}

TEST_F(ResultFileTest, MayBeEmpty) {
  EXPECT_EQ(Write(Folder() / "out", ""), "");
  EXPECT_EQ(NamesIn(Folder().Path()), Names{"out"});
  EXPECT_EQ(Folder().Read("out"), "");
}

TEST_F(ResultFileTest, LeavesTheOldFileUntilFinished) {
  Folder().Write("out", "old, and longer");
  {
    ResultFile result = Open(Folder() / "out");
    result.Write(std::string(200'000, 'x'));
    EXPECT_EQ(Folder().Read("out"), "old, and longer");
  }
  EXPECT_EQ(Folder().Read("out"), "old, and longer");
  EXPECT_EQ(NamesIn(Folder().Path()), Names{"out"});
  EXPECT_EQ(Write(Folder() / "out", "new"), "");
  EXPECT_EQ(Folder().Read("out"), "new");
}

TEST_F(ResultFileTest, LeavesNothingWhenNotFinished) {
  { Open(Folder() / "out").Write("text"); }
  EXPECT_EQ(NamesIn(Folder().Path()), Names{});
}

TEST_F(ResultFileTest, HasAllBytesHoweverTheyCome) {
  constexpr std::size_t kBuffer = std::size_t{1} << 16U;
  for (const std::size_t first : {std::size_t{1}, kBuffer - 1, kBuffer, kBuffer + 1}) {
    for (const std::size_t second : {std::size_t{0}, std::size_t{1}, kBuffer - 1, 3 * kBuffer}) {
      ResultFile result = Open(Folder() / "out");
      result.Write(std::string(first, 'a'));
      result.Write(std::string(second, 'b'));
      result.Write("c\x1b\r\n\xFF");
      result.Finish();
      ASSERT_EQ(Folder().Read("out"),
                std::string(first, 'a') + std::string(second, 'b') + "c\x1b\r\n\xFF");
    }
  }
}

TEST_F(ResultFileTest, HasTheModeOfANewFile) {
  struct Row {
    mode_t umask;
    mode_t want;
  };
  for (const Row& row : {Row{.umask = 0, .want = 0666}, Row{.umask = 022, .want = 0644},
                         Row{.umask = 027, .want = 0640}, Row{.umask = 0777, .want = 0}}) {
    fs::remove(Folder() / "out");
    EXPECT_EQ(CheckForked([&] {
                ::umask(row.umask);
                EXPECT_EQ(Write(Folder() / "out", "x"), "");
              }),
              0);
    EXPECT_EQ(ModeOf(Folder() / "out"), row.want);
  }
}

TEST_F(ResultFileTest, KeepsTheModeOfAnOldFile) {
  for (const mode_t mode : {0600U, 0640U, 0666U, 0755U, 0700U, 02755U, 01644U}) {
    Folder().Write("out", "old");
    ASSERT_EQ(::chmod((Folder() / "out").c_str(), mode), 0);
    EXPECT_EQ(CheckForked([&] {
                ::umask(077);
                EXPECT_EQ(Write(Folder() / "out", "new"), "");
              }),
              0);
    EXPECT_EQ(ModeOf(Folder() / "out"), mode);
    EXPECT_EQ(Folder().Read("out"), "new");
  }
}

TEST_F(ResultFileTest, NobodyReadsItWhoMayNotReadTheOldOne) {
  Folder().Write("out", "old");
  ASSERT_EQ(::chmod((Folder() / "out").c_str(), 0600), 0);
  EXPECT_EQ(CheckForked([&] {
              ::umask(0);
              const ResultFile result = Open(Folder() / "out");
              EXPECT_EQ(ModeOf(Folder() / NamesIn(Folder().Path())[0]), 0600U);
            }),
            0);
}

TEST_F(ResultFileTest, KeepsTheOwnerOfAnOldFile) {
  if (::geteuid() != 0) {
    GTEST_SKIP() << "only root may give files away";
  }
  Folder().Write("out", "old");
  ASSERT_EQ(::chown((Folder() / "out").c_str(), 1234, 4321), 0);
  ASSERT_EQ(::chmod((Folder() / "out").c_str(), 06750), 0);
  EXPECT_EQ(Write(Folder() / "out", "new"), "");
  struct stat status = {};
  ASSERT_EQ(::stat((Folder() / "out").c_str(), &status), 0);
  EXPECT_EQ(status.st_uid, 1234U);
  EXPECT_EQ(status.st_gid, 4321U);
  EXPECT_EQ(status.st_mode & 07777U, 06750U);
}

}  // namespace

}  // namespace ptick::companion
