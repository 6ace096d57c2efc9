#include "platform/linux/ports/runtime_directory.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "platform/linux/ports/port_sender.h"
#include "support/child_process.h"
#include "support/port_fixture.h"

namespace ptick::ports {

namespace {

namespace fs = std::filesystem;
using testing::ChildProcess;
using testing::Talk;

class RuntimeDirectory : public testing::PortTest {
 protected:
  static void Name(const std::string& path) {
    setenv("MAVRO_RUNTIME_DIR", path.c_str(), 1);  // NOLINT(concurrency-mt-unsafe)
  }
  static void SetMode(const fs::path& path, mode_t mode) {
    ASSERT_EQ(chmod(path.c_str(), mode), 0);
  }

  /// Every operation on port 5 gives `error`, and there is no port to see.
  static void ExpectRefused(int error, const std::string& why) {
    EXPECT_EQ(OpenRuntimeDirectory().error, error) << why;
    EXPECT_EQ(SendPortMessage(5, "TICKCTL:STOP"), error) << why;
    EXPECT_EQ(MonitorOn(5, "", ""), error) << why;
    EXPECT_EQ(MonitorOff(5), error) << why;
    EXPECT_TRUE(ListeningPorts(0, 2147483647).empty()) << why;
  }
};

TEST_F(RuntimeDirectory, IsNamedByTheEnvironment) {
  struct Row {
    const char* own;
    const char* user;
    std::string want;
  };
  const std::string standard = "/tmp/mavro-" + std::to_string(geteuid());
  const std::vector<Row> rows = {
      {"/own", "/user", "/own"},
      {"/own/", "/user", "/own"},
      {"/own///", nullptr, "/own"},
      {"/", nullptr, "/"},
      {"///", nullptr, "/"},
      {"/own/.", nullptr, "/own"},
      {"/own//././", nullptr, "/own"},
      {"/own/.hidden/", nullptr, "/own/.hidden"},
      {"/own/..", nullptr, "/own/.."},
      {"/.", nullptr, "/"},
      {".", nullptr, "."},
      {"./", nullptr, "."},
      {"./.", nullptr, "."},
      {"relative/own", nullptr, "relative/own"},
      {nullptr, "/user", "/user/mavro"},
      {nullptr, "/user/", "/user//mavro"},
      {"", "/user", "/user/mavro"},
      {nullptr, nullptr, standard},
      {"", "", standard},
  };
  const auto set = [](const char* name, const char* value) {
    // NOLINTNEXTLINE(concurrency-mt-unsafe)
    return value == nullptr ? unsetenv(name) : setenv(name, value, 1);
  };
  for (const Row& row : rows) {
    set("MAVRO_RUNTIME_DIR", row.own);
    set("XDG_RUNTIME_DIR", row.user);
    EXPECT_EQ(RuntimeDirectoryPath(), row.want);
  }
}

TEST_F(RuntimeDirectory, IsTrustedWhileNobodyElseCanWriteToIt) {
  const ChildProcess listener([](const Talk& talk) { testing::RunListener(talk, 5); });
  ASSERT_EQ(listener.Hear(), "listening");
  for (const mode_t mode : {0700U, 0755U, 0711U, 0750U, 01755U, 02700U}) {
    SetMode(Directory(), mode);
    EXPECT_EQ(SendPortMessage(5, "TICKCTL:A"), 0) << std::oct << mode;
    EXPECT_EQ(listener.Hear(), "control TICKCTL:A") << std::oct << mode;
    EXPECT_EQ(ListeningPorts(0, 9), std::vector<std::int64_t>{5}) << std::oct << mode;
  }
}

TEST_F(RuntimeDirectory, IsRefusedWhenOthersCanWriteToIt) {
  const ChildProcess listener([](const Talk& talk) { testing::RunListener(talk, 5); });
  ASSERT_EQ(listener.Hear(), "listening");
  for (const mode_t mode : {0777U, 01777U, 0770U, 0720U, 0702U, 0775U, 0757U}) {
    SetMode(Directory(), mode);
    ExpectRefused(EACCES, "mode " + std::to_string(mode));
    EXPECT_EQ(CreateRuntimeDirectory().error, EACCES) << mode;
  }
  // Nothing has got through before this.
  SetMode(Directory(), 0700);
  EXPECT_EQ(SendPortMessage(5, "TICKCTL:B"), 0);
  EXPECT_EQ(listener.Hear(), "control TICKCTL:B");
}

TEST_F(RuntimeDirectory, IsRefusedWhenSomebodyElseOwnsIt) {
  if (geteuid() != 0) {
    GTEST_SKIP() << "needs the right to give a directory away";
  }
  const ChildProcess listener([](const Talk& talk) { testing::RunListener(talk, 5); });
  ASSERT_EQ(listener.Hear(), "listening");
  ASSERT_EQ(chown(Directory().c_str(), 65534, 65534), 0);
  ExpectRefused(EACCES, "another owner");
}

TEST_F(RuntimeDirectory, IsNoSymbolicLink) {
  const ChildProcess listener([](const Talk& talk) { testing::RunListener(talk, 5); });
  ASSERT_EQ(listener.Hear(), "listening");
  const fs::path link = Outside("link");
  fs::create_directory_symlink(Directory(), link);
  for (const std::string tail : {"", "/", "//", "/.", "/./", "//.//"}) {
    Name(link.native() + tail);
    ExpectRefused(EACCES, "link" + tail);
    EXPECT_EQ(CreateRuntimeDirectory().error, EACCES);
  }
  // A link on the way to it is as good as a directory.
  fs::create_directory_symlink(Directory().parent_path(), Outside("way"));
  Name(Outside("way") / "run");
  EXPECT_EQ(SendPortMessage(5, "TICKCTL:A"), 0);
}

TEST_F(RuntimeDirectory, IsADirectory) {
  std::ofstream(Outside("file")) << "x";
  Name(Outside("file"));
  ExpectRefused(EACCES, "file");
  Name(Outside("file") / "below");
  ExpectRefused(EACCES, "below a file");
}

TEST_F(RuntimeDirectory, HasNoPortsWhenMissing) {
  Name(Outside("missing"));
  ExpectRefused(ENOENT, "missing");
  Name(Outside("missing") / "too");
  ExpectRefused(ENOENT, "missing too");
  EXPECT_EQ(CreateRuntimeDirectory().error, ENOENT);
}

TEST_F(RuntimeDirectory, IsRefusedWhenItsNameIsLongerThanAnyPath) {
  Name("/" + std::string(5000, 'x'));
  ExpectRefused(EACCES, "5000 bytes");
}

TEST_F(RuntimeDirectory, IsMadeForTheUserAlone) {
  const mode_t mask = umask(0);
  Name(Outside("new"));
  EXPECT_EQ(CreateRuntimeDirectory().error, 0);
  umask(mask);
  EXPECT_EQ(fs::status(Outside("new")).permissions(), fs::perms::owner_all);
  EXPECT_EQ(CreateRuntimeDirectory().error, 0) << "a second time";
}

TEST_F(RuntimeDirectory, StaysTheCheckedOneWhenItsNameChangesHands) {
  const Opened opened = OpenRuntimeDirectory();
  ASSERT_EQ(opened.error, 0);
  fs::rename(Directory(), Outside("moved"));
  fs::create_directory(Directory());
  EXPECT_EQ(fs::canonical(DescriptorPath(opened.descriptor)), fs::canonical(Outside("moved")));
}

}  // namespace

}  // namespace ptick::ports
