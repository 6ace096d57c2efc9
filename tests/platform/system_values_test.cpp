#include "platform/linux/system_values.h"

#include <gtest/gtest.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <ctime>
#include <limits>
#include <string>
#include <vector>

#include "platform/linux/linux_platform.h"
#include "support/environment.h"
#include "support/forked.h"
#include "support/temp_directory.h"

namespace ptick {

namespace {

using testing::EnvironmentValue;
using testing::RunForked;

// Runs `body` with a terminal of that size on standard output.
int RunOnTerminal(unsigned short rows, unsigned short columns, const std::function<int()>& body) {
  return RunForked([&]() -> int {
    int master = -1;
    int slave = -1;
    const winsize size = {.ws_row = rows, .ws_col = columns, .ws_xpixel = 0, .ws_ypixel = 0};
    if (::openpty(&master, &slave, nullptr, nullptr, &size) != 0) {
      return 255;
    }
    ::dup2(slave, STDOUT_FILENO);
    return body();
  });
}

int TerminalRows() { return static_cast<int>(ReadTerminalSize().rows); }
int TerminalColumns() { return static_cast<int>(ReadTerminalSize().columns); }

TEST(SystemValuesTest, PageWidthIsColumnsWhereThatIsAWholeNumberInRange) {
  struct Row {
    std::string columns;
    int want;
  };
  const std::vector<Row> rows = {
      {"1", 1},
      {"132", 132},
      {"0132", 132},
      {"0000000000000000000000200", 200},
      {"", 99},
      {"0", 99},
      {"-5", 99},
      {"+80", 99},
      {" 80", 99},
      {"80 ", 99},
      {"80x", 99},
      {"1e2", 99},
      {"32768", 99},
      {"12.5", 99},
      {"99999999999999999999999999", 99},
      {"65616", 99},
      {"4294967376", 99},
  };
  for (const Row& row : rows) {
    const EnvironmentValue columns("COLUMNS", row.columns);
    EXPECT_EQ(RunOnTerminal(30, 99, [] { return static_cast<int>(ReadPageWidth()); }), row.want)
        << row.columns;
  }
  const EnvironmentValue widest("COLUMNS", "32767");
  EXPECT_EQ(ReadPageWidth(), 32767);
}

TEST(SystemValuesTest, PageSizeIsTheTerminalsOnStandardOutput) {
  const EnvironmentValue columns("COLUMNS", std::nullopt);
  EXPECT_EQ(RunOnTerminal(30, 99, [] { return static_cast<int>(ReadPageWidth()); }), 99);
  EXPECT_EQ(RunOnTerminal(30, 99, TerminalRows), 30);
  EXPECT_EQ(RunOnTerminal(30, 99, TerminalColumns), 99);
}

TEST(SystemValuesTest, PageSizeIsTheUsualOneWhereNothingTellsIt) {
  const EnvironmentValue columns("COLUMNS", std::nullopt);
  EXPECT_EQ(RunOnTerminal(0, 0, [] { return static_cast<int>(ReadPageWidth()); }), 80);
  EXPECT_EQ(RunOnTerminal(0, 0, TerminalRows), 24);
  EXPECT_EQ(RunOnTerminal(0, 0, TerminalColumns), 80);
  const auto without_output = [](auto read) {
    return RunForked([read]() -> int {
      ::close(STDOUT_FILENO);
      return static_cast<int>(read());
    });
  };
  EXPECT_EQ(without_output(ReadPageWidth), 80);
  EXPECT_EQ(without_output(TerminalRows), 24);
  EXPECT_EQ(without_output(TerminalColumns), 80);
}

// COLUMNS sets the width of the page; the terminal knows better how wide it is.
TEST(SystemValuesTest, TheTerminalIsAsWideAsItSays) {
  const EnvironmentValue columns("COLUMNS", "132");
  EXPECT_EQ(RunOnTerminal(30, 99, TerminalColumns), 99);
  EXPECT_EQ(RunOnTerminal(0, 0, TerminalColumns), 132);
}

TEST(SystemValuesTest, OwnPortIsDigitsAsTheyAreWritten) {
  const std::vector<std::pair<std::optional<std::string>, std::string>> rows = {
      {std::nullopt, "0"}, {"", "0"},   {"7", "7"},
      {"007", "007"},      {"-1", "0"}, {"1.5", "0"},
      {"7a", "0"},         {" 7", "0"}, {"123456789012345678901", "123456789012345678901"},
  };
  for (const auto& [value, want] : rows) {
    const EnvironmentValue port("MAVRO_PORT", value);
    EXPECT_EQ(ReadOwnPort(), want) << value.value_or("(unset)");
  }
}

TEST(SystemValuesTest, AccountIsTheVariableElseTheUser) {
  const EnvironmentValue logname("LOGNAME", "not asked");
  const std::string user = FindUserName("/etc/passwd", ::getuid()).value_or("not asked");
  const std::vector<std::pair<std::optional<std::string>, std::string>> rows = {
      {"SALES", "SALES"}, {" ", " "}, {"", user}, {std::nullopt, user}};
  for (const auto& [value, want] : rows) {
    const EnvironmentValue account("MAVRO_ACCOUNT", value);
    EXPECT_EQ(ReadAccountName(), want) << value.value_or("(unset)");
  }
}

TEST(SystemValuesTest, AccountOfAnUnlistedUserIsTheLoginNameElseTheNumber) {
  if (::getuid() != 0) {
    GTEST_SKIP() << "only root can be another user";
  }
  constexpr uid_t kUnlisted = 3999999999U;
  const EnvironmentValue account("MAVRO_ACCOUNT", std::nullopt);
  struct Row {
    std::optional<std::string> logname;
    std::optional<std::string> user;
    std::string want;
  };
  const std::vector<Row> rows = {{"ann", "bob", "ann"},
                                 {"", "bob", "bob"},
                                 {std::nullopt, "bob", "bob"},
                                 {std::nullopt, "", "3999999999"},
                                 {std::nullopt, std::nullopt, "3999999999"}};
  for (const Row& row : rows) {
    const EnvironmentValue logname("LOGNAME", row.logname);
    const EnvironmentValue user("USER", row.user);
    EXPECT_EQ(testing::CheckForked([&row] {
                ASSERT_EQ(::setuid(kUnlisted), 0);
                EXPECT_EQ(ReadAccountName(), row.want);
              }),
              0);
  }
}

TEST(SystemValuesTest, FindsTheFirstUserOfThatNumber) {
  const testing::TempDirectory directory;
  const std::string path = directory.Write("passwd",
                                           "root:x:0:0:root:/root:/bin/sh\n"
                                           "\n"
                                           "broken\n"
                                           "short:x\n"
                                           ":x:7:7::/:\n"
                                           "bad:x:12a:1::/:\n"
                                           "ann:x:1000:1000:Ann:/home/ann:/bin/sh\n"
                                           "alias:x:1000:1000::/:\n"
                                           "last:x:4294967294:1::/:/bin/sh");
  const std::vector<std::pair<std::uint32_t, std::optional<std::string>>> rows = {
      {0, "root"},        {1000, "ann"},     {7, std::nullopt},
      {12, std::nullopt}, {1, std::nullopt}, {4294967294U, "last"}};
  for (const auto& [uid, want] : rows) {
    EXPECT_EQ(FindUserName(path, uid), want) << uid;
  }
  EXPECT_EQ(FindUserName(path + ".missing", 0), std::nullopt);
}

TEST(SystemValuesTest, ZoneOffsetIsThatOfTheMoment) {
  struct Row {
    std::string zone;
    std::int64_t time;
    std::optional<std::int64_t> want;
  };
  const std::string central = "CET-1CEST,M3.5.0,M10.5.0/3";
  const std::vector<Row> rows = {
      {"UTC0", 0, 0},
      {"EST5", 0, -18000},
      {"XXX-5:30", 1700000000, 19800},
      {central, 1704067200, 3600},  // 1 January 2024
      {central, 1719792000, 7200},  // 1 July 2024
      {"UTC0", -62135596800, 0},    // year 1
      {"UTC0", std::numeric_limits<std::int64_t>::max(), std::nullopt},
      {"UTC0", std::numeric_limits<std::int64_t>::min(), std::nullopt},
  };
  for (const Row& row : rows) {
    const EnvironmentValue zone("TZ", row.zone);
    LinuxPlatform platform(0, nullptr);
    EXPECT_EQ(platform.ZoneOffset(row.time), row.want) << row.zone << " at " << row.time;
  }
  ::tzset();
}

TEST(SystemValuesTest, GivesTheCommandLineWithTheNameFirst) {
  const std::vector<const char*> words = {"ptick", "-n", "", "a b"};
  LinuxPlatform platform(static_cast<int>(words.size()), words.data());
  EXPECT_EQ(platform.CommandLine(), (std::vector<std::string>{"ptick", "-n", "", "a b"}));
}

TEST(SystemValuesTest, NowIsTheClockOfTheSystem) {
  LinuxPlatform platform(0, nullptr);
  const std::time_t before = std::time(nullptr);
  const std::int64_t now = platform.Now();
  EXPECT_LE(before, now);
  EXPECT_LE(now, std::time(nullptr));
}

}  // namespace

}  // namespace ptick
