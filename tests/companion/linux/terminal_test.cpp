// Companions on a terminal: colours, widths, safety, the status line.

#include "companion/linux/terminal.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <string>
#include <vector>

#include "companion/linux/standard_error.h"
#include "companion/support/sample_run.h"
#include "support/temp_directory.h"

namespace ptick::companion {

namespace {

using ptick::testing::TempDirectory;
using testing::TerminalRun;

// What the driver of a terminal makes of the line ends that are written to it.
std::string OnScreen(std::string_view text) {
  std::string shown;
  for (const char byte : text) {
    shown += byte == '\n' ? "\r\n" : std::string(1, byte);
  }
  return shown;
}

void FromNothing() { ::dup2(::open("/dev/null", O_RDONLY), STDIN_FILENO); }

TEST(Terminal, HasColor) {
  const std::string colored =
      OnScreen("\x1b[1mBytes\x1b[0m  \x1b[1mFile\x1b[0m\n    \x1b[1;31m0\x1b[0m  -\n");
  const std::string plain = OnScreen("Bytes  File\n    0  -\n");
  struct Row {
    std::vector<std::string> arguments;
    const char* variable;
    const char* value;
    std::string want;
  };
  const std::vector<Row> rows = {
      {{}, "X", "", colored},
      {{}, "NO_COLOR", "1", plain},
      {{}, "NO_COLOR", "", colored},
      {{}, "TERM", "dumb", plain},
      {{"--color=always"}, "NO_COLOR", "1", colored},
      {{"--color=never"}, "X", "", plain},
      {{"--color=auto"}, "NO_COLOR", "1", plain},
  };
  for (const Row& row : rows) {
    TerminalRun run(row.arguments, [&row] {
      FromNothing();
      ::setenv(row.variable, row.value, 1);
    });
    EXPECT_EQ(run.End(), 0);
    EXPECT_EQ(run.Shown(), row.want) << row.variable << "=" << row.value;
  }
}

TEST(Terminal, CutsToItsWidth) {
  const TempDirectory folder;
  const std::string name(200, 'n');
  const std::string file = folder.Write(name, "");
  const auto run = [&](const char* columns) {
    TerminalRun result({"--color=never", file}, [columns] {
      if (columns != nullptr) {
        ::setenv("COLUMNS", columns, 1);
      }
    });
    EXPECT_EQ(result.End(), 0);
    return result.Shown();
  };
  EXPECT_EQ(run(nullptr), OnScreen("Bytes  File\n    0  " + file.substr(0, 30) + "...\n"));
  EXPECT_EQ(run("20"), OnScreen("Bytes  File\n    0  " + file.substr(0, 10) + "...\n"));
  EXPECT_EQ(run("10"), OnScreen("Bytes  Fi>\n    0  " + file.substr(0, 2) + ">\n"));
}

TEST(Terminal, GetsNothingThatDrivesIt) {
  const TempDirectory folder;
  const std::string name = "a\x1b[2J\x9B\xC2\x9B\xE2\x80\xAE\n\tb";
  const std::string file = folder.Write(name, "");
  const auto run = [&](const std::string& form) {
    TerminalRun result({"--color=never", "--form=" + form, file},
                       [] { ::setenv("COLUMNS", "200", 1); });
    EXPECT_EQ(result.End(), 0);
    return result.Shown();
  };
  const std::string stem = folder.Path().native() + "/";
  // As Latin-1, since it is no UTF-8.
  EXPECT_EQ(run("text"),
            OnScreen("Bytes  File\n    0  " + stem + "a?[2J?\xC3\x82?\xC3\xA2?\xC2\xAE??b\n"));
  // The only CR is that of the format.
  EXPECT_EQ(run("csv"),
            OnScreen("file,bytes\r\n\"" + stem + "a?[2J?\xC3\x82?\xC3\xA2?\xC2\xAE\n\tb\",0\r\n"));
  EXPECT_EQ(run("json"),
            OnScreen("[\n{\"file\":\"" + stem +
                     "a\\u001b[2J\\u009b\xC3\x82\\u009b\xC3\xA2\\u0080\xC2\xAE\\n\\tb\","
                     "\"bytes\":0}\n]\n"));
}

TEST(Terminal, GetsNoBytes) {
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{"--form=bytes"}, {"--form=bytes", "-o", "/dev/tty"}}) {
    TerminalRun run(arguments, FromNothing);
    EXPECT_EQ(run.End(), 2);
    const std::string where = arguments.size() == 1 ? "standard output" : "/dev/tty";
    EXPECT_EQ(run.Shown(),
              OnScreen("ptick-sample: " + where +
                       ": is a terminal, and the result is no text; use -o FILE or a pipe\n"));
  }
}

TEST(Terminal, GetsMessagesOfOneLine) {
  // NOLINTNEXTLINE(misc-misleading-bidirectional)
  TerminalRun run({"a\x1b[2J\r\nb\tc \xC2\x9B\xE2\x80\xAE"}, FromNothing);
  EXPECT_EQ(run.End(), 2);
  EXPECT_EQ(run.Shown(), OnScreen("ptick-sample: a?[2J??b\tc ??: No such file or directory\n"));
}

/// The ends of a pipe that a test writes into.
struct Pipe {
  Pipe() { EXPECT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0); }
  std::array<int, 2> ends = {};
  void Write(std::string_view text) const {
    EXPECT_EQ(::write(ends[1], text.data(), text.size()), static_cast<ssize_t>(text.size()));
  }
};

void AfterASecond() { ::usleep(1'050'000); }

TEST(StatusLine, ShowsProgressOfPipesAndGoes) {
  const Pipe pipe;
  TerminalRun run({"--color=never"}, [&] { ::dup2(pipe.ends[0], STDIN_FILENO); });
  pipe.Write("abc");
  AfterASecond();
  pipe.Write("defg");
  run.Await("ptick-sample: 7 bytes read");
  ::close(pipe.ends[1]);
  EXPECT_EQ(run.End(), 0);
  EXPECT_EQ(run.Shown(),
            "\r\x1b[Kptick-sample: 7 bytes read\r\x1b[K" + OnScreen("Bytes  File\n    7  -\n"));
}

TEST(StatusLine, StaysAwayWhereItIsNotWanted) {
  struct Row {
    std::vector<std::string> arguments;
    std::function<void()> prepare;
  };
  const std::vector<Row> rows = {
      {{"-q", "--color=never"}, [] {}},
      {{"--color=never"}, [] { ::setenv("TERM", "dumb", 1); }},
      {{"--color=never"}, [] { ::dup2(::open("/dev/null", O_WRONLY), STDERR_FILENO); }},
  };
  for (const Row& row : rows) {
    const Pipe pipe;
    TerminalRun run(row.arguments, [&] {
      ::dup2(pipe.ends[0], STDIN_FILENO);
      row.prepare();
    });
    pipe.Write("abc");
    AfterASecond();
    pipe.Write("defg");
    ::close(pipe.ends[1]);
    EXPECT_EQ(run.End(), 0);
    EXPECT_EQ(run.Shown(), OnScreen("Bytes  File\n    7  -\n"));
  }
}

TEST(StatusLine, GoesWithASignal) {
  const Pipe pipe;
  TerminalRun run({"--color=never"}, [&] { ::dup2(pipe.ends[0], STDIN_FILENO); });
  pipe.Write("abc");
  AfterASecond();
  pipe.Write("defg");
  run.Await("ptick-sample: 7 bytes read");
  run.Signal(SIGINT);
  EXPECT_EQ(run.End(), 128 + SIGINT);
  EXPECT_EQ(run.Shown(), "\r\x1b[Kptick-sample: 7 bytes read\r\x1b[K");
}

TEST(StatusLine, MakesRoomForMessages) {
  TerminalRun run([] {
    StandardError standard_error("p");
    standard_error.Show("working");
    standard_error.Tell({.file = "f", .line = {}, .reason = "odd"});
    standard_error.Tell({.file = "g", .line = {}, .reason = "odder"});
    standard_error.Show("still \x1bworking\n");
    standard_error.Show(std::string(100, 'x'));
    standard_error.TellOutOfMemory();
    standard_error.Erase();
    return 0;
  });
  EXPECT_EQ(run.End(), 0);
  EXPECT_EQ(run.Shown(), OnScreen("\r\x1b[Kp: working\r\x1b[Kp: f: odd\np: g: odder\n"
                                  "\r\x1b[Kp: still ?working?\r\x1b[Kp: " +
                                  std::string(33, 'x') + "...\r\x1b[Kp: out of memory\n"));
}

TEST(StatusLine, StaysOutOfTheForegroundOfOthers) {
  TerminalRun run([] {
    // A job in the background: this process leaves the foreground to its parent.
    const pid_t job = ::fork();
    if (job == 0) {
      ::setpgid(0, 0);
      StandardError standard_error("p");
      standard_error.Show("working");
      ::_exit(standard_error.IsSeen() ? 0 : 1);
    }
    int status = 0;
    ::waitpid(job, &status, 0);
    return WEXITSTATUS(status);
  });
  EXPECT_EQ(run.End(), 0);
  EXPECT_EQ(run.Shown(), "");
}

TEST(Terminal, IsAskedForItsColumns) {
  TerminalRun run([] {
    const winsize none = {.ws_row = 0, .ws_col = 0, .ws_xpixel = 0, .ws_ypixel = 0};
    bool is_good = ColumnsOf(STDOUT_FILENO) == 40 && IsTerminal(STDOUT_FILENO);
    ::ioctl(STDOUT_FILENO, TIOCSWINSZ, &none);
    is_good = is_good && ColumnsOf(STDOUT_FILENO) == 80;
    ::setenv("COLUMNS", "33", 1);
    return is_good && ColumnsOf(STDOUT_FILENO) == 33 ? 0 : 1;
  });
  EXPECT_EQ(run.End(), 0);
  const int file = ::open("/dev/null", O_RDWR | O_CLOEXEC);
  EXPECT_FALSE(IsTerminal(file));
  EXPECT_EQ(FormFor(file, ColorWhen::kAuto).columns, std::nullopt);
  EXPECT_TRUE(FormFor(file, ColorWhen::kAlways).has_color);
  ::close(file);
}

}  // namespace

}  // namespace ptick::companion
