// Where results go that are asked for by a name.

#include "companion/linux/result_place.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "companion/support/folder.h"
#include "companion/support/result_file_fixture.h"
#include "companion/support/sample_run.h"
#include "support/forked.h"

namespace ptick::companion {

namespace {

namespace fs = std::filesystem;
using ptick::testing::AwaitEnd;
using ptick::testing::CheckForked;
using testing::ModeOf;
using testing::NamesIn;
using testing::Start;

using Names = std::vector<std::string>;

class ResultPlaceTest : public testing::ResultFileFixture {};

TEST_F(ResultPlaceTest, FollowsLinks) {
  struct Row {
    std::string_view link_text;
    std::string_view target;
  };
  fs::create_directory(Folder() / "sub");
  fs::create_directory(Folder() / "elsewhere");
  fs::create_symlink("../elsewhere", Folder() / "sub" / "up");
  const std::string absolute = Folder() / "absolute";
  for (const bool is_there : {true, false}) {
    for (const Row& row : {Row{"sub/target", "sub/target"}, Row{absolute, "absolute"},
                           Row{"./near", "near"}, Row{"sub/up/target", "elsewhere/target"}}) {
      fs::remove(Folder() / row.target);
      fs::remove(Folder() / "link");
      if (is_there) {
        Folder().Write(row.target, "old");
        ASSERT_EQ(::chmod((Folder() / row.target).c_str(), 0604), 0);
      }
      fs::create_symlink(row.link_text, Folder() / "second");
      fs::create_symlink("second", Folder() / "link");
      EXPECT_EQ(Write(Folder() / "link", "new"), "");
      EXPECT_TRUE(fs::is_symlink(Folder() / "link"));
      EXPECT_EQ(fs::read_symlink(Folder() / "second"), row.link_text);
      EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(Folder() / row.target)));
      EXPECT_EQ(Folder().Read(row.target), "new");
      if (is_there) {
        EXPECT_EQ(ModeOf(Folder() / row.target), 0604U);
      }
      fs::remove(Folder() / "second");
    }
  }
}

TEST_F(ResultPlaceTest, SaysWhyItCannotBeWritten) {
  Folder().Write("file", "old");
  fs::create_directory(Folder() / "folder");
  fs::create_symlink("loop", Folder() / "loop");
  fs::create_symlink("folder", Folder() / "to_folder");
  fs::create_symlink("none/none", Folder() / "to_none");
  struct Row {
    std::string name;
    std::string want;
  };
  const std::vector<Row> rows = {
      {"folder", "Is a directory"},
      {"folder/", "Is a directory"},
      {"folder/.", "Is a directory"},
      {"folder/..", "Is a directory"},
      {"to_folder", "Is a directory"},
      {"new/", "Is a directory"},
      {"none/new", "No such file or directory"},
      {"to_none", "No such file or directory"},
      {"file/new", "Not a directory"},
      {"file/", "Not a directory"},
      {"loop", "Too many levels of symbolic links"},
      {std::string(256, 'n'), "File name too long"},
  };
  const Names before = NamesIn(Folder().Path());
  for (const Row& row : rows) {
    const std::string file = (Folder().Path() / row.name).native();
    EXPECT_EQ(Write(file, "new"), "p: " + file + ": " + row.want + "\n");
  }
  EXPECT_EQ(Write("", "new"), "p: '': No such file or directory\n");
  EXPECT_EQ(NamesIn(Folder().Path()), before);
  EXPECT_EQ(Folder().Read("file"), "old");
}

TEST_F(ResultPlaceTest, TakesNamesOfAnyLength) {
  const std::string longest(255, 'n');
  EXPECT_EQ(Write(Folder() / longest, "x"), "");
  EXPECT_EQ(NamesIn(Folder().Path()), Names{longest});
}

TEST_F(ResultPlaceTest, LeavesWhatIsProtected) {
  Folder().Write("file", "old");
  fs::create_directory(Folder() / "folder");
  ASSERT_EQ(::chmod((Folder() / "file").c_str(), 0444), 0);
  ASSERT_EQ(::chmod(Folder().Path().c_str(), 0777), 0);
  ASSERT_EQ(::chmod((Folder() / "folder").c_str(), 0555), 0);
  EXPECT_EQ(CheckForked([&] {
              constexpr uid_t kNobody = 65534;
              if (::geteuid() == 0) {
                ASSERT_EQ(::setresuid(kNobody, kNobody, kNobody), 0);
              }
              EXPECT_EQ(Write(Folder() / "file", "new"),
                        "p: " + (Folder() / "file").native() + ": Permission denied\n");
              EXPECT_EQ(Write(Folder() / "folder/new", "new"),
                        "p: " + (Folder() / "folder/new").native() + ": Permission denied\n");
            }),
            0);
  EXPECT_EQ(Folder().Read("file"), "old");
  EXPECT_EQ(NamesIn(Folder().Path()), (Names{"file", "folder"}));
  EXPECT_EQ(NamesIn(Folder() / "folder"), Names{});
}

TEST_F(ResultPlaceTest, GoesWhenItCannotBeRenamed) {
  {
    ResultFile result = Open(Folder() / "out");
    result.Write("new");
    fs::create_directories(Folder() / "out" / "full");
    try {
      result.Finish();
      ADD_FAILURE() << "finished";
    } catch (const Trouble& trouble) {
      EXPECT_EQ(trouble.What().file, (Folder() / "out").native());
      EXPECT_EQ(trouble.What().reason, "Is a directory");
    }
  }
  EXPECT_EQ(NamesIn(Folder().Path()), Names{"out"});
}

/// Waits for what a process writes into a named pipe.
std::string ReadAll(const fs::path& fifo) {
  std::ostringstream text;
  text << std::ifstream(fifo, std::ios::binary).rdbuf();
  return std::move(text).str();
}

TEST_F(ResultPlaceTest, WritesIntoPipes) {
  const fs::path fifo = Folder().MakeFifo("pipe");
  fs::create_symlink("pipe", Folder() / "link");
  for (const char* name : {"pipe", "link"}) {
    const pid_t writer = Start([&] {
      EXPECT_EQ(Write(Folder() / name, "through " + std::string(300'000, 'x')), "");
      return 0;
    });
    EXPECT_EQ(ReadAll(fifo), "through " + std::string(300'000, 'x'));
    EXPECT_EQ(AwaitEnd(writer), 0);
    EXPECT_EQ(NamesIn(Folder().Path()), (Names{"link", "pipe"}));
    EXPECT_TRUE(fs::is_fifo(fifo));
  }
}

TEST_F(ResultPlaceTest, IsSilentWhenItsReaderCloses) {
  const fs::path fifo = Folder().MakeFifo("pipe");
  const pid_t writer = Start([&] {
    ::signal(SIGPIPE, SIG_IGN);
    ResultFile result = Open(fifo);
    EXPECT_FALSE(result.IsClosed());
    for (int i = 0; i < 1000 && !result.IsClosed(); ++i) {
      result.Write(std::string(100'000, 'x'));
    }
    EXPECT_TRUE(result.IsClosed());
    result.Write("more");
    result.Finish();
    return 0;
  });
  {
    std::ifstream reader(fifo);
    EXPECT_EQ(reader.get(), 'x');
  }
  EXPECT_EQ(AwaitEnd(writer), 0);
}

TEST_F(ResultPlaceTest, WaitsForReadersOfNonBlockingPipes) {
  const fs::path fifo = Folder().MakeFifo("pipe");
  const pid_t writer = Start([&] {
    const int fd = ::open(fifo.c_str(), O_WRONLY);
    ::fcntl(fd, F_SETFL, O_WRONLY | O_NONBLOCK);
    EXPECT_EQ(Write("/dev/fd/" + std::to_string(fd), std::string(1'000'000, 'x')), "");
    return 0;
  });
  EXPECT_EQ(ReadAll(fifo), std::string(1'000'000, 'x'));
  EXPECT_EQ(AwaitEnd(writer), 0);
}

TEST_F(ResultPlaceTest, WritesDevicesAsTheyAre) {
  EXPECT_EQ(Write("/dev/null", "x"), "");
  EXPECT_EQ(Write("/dev/full", "x"), "p: /dev/full: No space left on device\n");
  EXPECT_EQ(Write("/dev/full", std::string(100'000, 'x')),
            "p: /dev/full: No space left on device\n");
  fs::create_symlink("/dev/null", Folder() / "null");
  EXPECT_EQ(Write(Folder() / "null", "x"), "");
  EXPECT_EQ(NamesIn(Folder().Path()), Names{"null"});
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

/// Runs `body` with a descriptor of the process on a file that has a first line already.
void WithDescriptor(int fd, const fs::path& file, const std::function<void()>& body) {
  EXPECT_EQ(CheckForked([&] {
              std::ofstream(file) << "first\n";
              const int opened = ::open(file.c_str(), O_WRONLY);
              ::lseek(opened, 0, SEEK_END);
              ::dup2(opened, fd);
              body();
              EXPECT_EQ(::write(fd, "last\n", 5), 5);
            }),
            0);
}

TEST_F(ResultPlaceTest, GoesOnWhereADescriptorIs) {
  fs::create_symlink("/dev/stdout", Folder() / "link");
  const std::string link = Folder() / "link";
  for (const std::string& name :
       {std::string("/dev/stdout"), std::string("/dev/fd/1"), std::string("/proc/self/fd/1"),
        std::string("/proc/thread-self/fd/1"), link}) {
    WithDescriptor(STDOUT_FILENO, Folder() / "out",
                   [&] { EXPECT_EQ(Write(name, "result\n"), ""); });
    EXPECT_EQ(Folder().Read("out"), "first\nresult\nlast\n") << name;
  }
  WithDescriptor(77, Folder() / "out", [&] { EXPECT_EQ(Write("/dev/fd/77", "result\n"), ""); });
  EXPECT_EQ(Folder().Read("out"), "first\nresult\nlast\n");
  EXPECT_EQ(NamesIn(Folder().Path()), (Names{"link", "out"}));
}

TEST_F(ResultPlaceTest, RefusesDescriptorsThatAreNotOpen) {
  EXPECT_EQ(Write("/dev/fd/999", "x"), "p: /dev/fd/999: Bad file descriptor\n");
  EXPECT_EQ(Write("/dev/fd/x", "x"), "p: /dev/fd/x: No such file or directory\n");
  EXPECT_EQ(Write("/dev/fd/1x", "x"), "p: /dev/fd/1x: No such file or directory\n");
  EXPECT_EQ(Write("/dev/fd/", "x"), "p: /dev/fd/: Is a directory\n");
}

TEST_F(ResultPlaceTest, WritesDescriptorsOfOthersAsTheyAre) {
  Folder().Write("out", "old, and longer");
  const pid_t other = Start([&] {
    ::dup2(::open((Folder() / "out").c_str(), O_WRONLY), 9);
    ::pause();
    return 0;
  });
  const std::string name = "/proc/" + std::to_string(other) + "/fd/9";
  while (!fs::exists(name)) {
    ::sched_yield();
  }
  fs::create_hard_link(Folder() / "out", Folder() / "same");
  EXPECT_EQ(Write(name, "new"), "");
  ::kill(other, SIGKILL);
  AwaitEnd(other);
  EXPECT_EQ(Folder().Read("same"), "new");
  EXPECT_EQ(Folder().Read("out"), "new");
  EXPECT_EQ(NamesIn(Folder().Path()), (Names{"out", "same"}));
}

}  // namespace

}  // namespace ptick::companion
