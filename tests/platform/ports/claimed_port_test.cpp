#include "platform/linux/ports/claimed_port.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <set>
#include <string>
#include <system_error>
#include <vector>

#include "platform/linux/ports/port_sender.h"
#include "support/child_process.h"
#include "support/port_fixture.h"

namespace ptick::ports {

namespace {

namespace fs = std::filesystem;
using testing::ChildProcess;
using testing::Talk;

/// The error number of an attempt to take the port, 0 for success.
int ClaimError(std::int64_t port) {
  try {
    const ClaimedPort claimed(port);
  } catch (const std::system_error& error) {
    return error.code().value();
  }
  return 0;
}

class Claim : public testing::PortTest {
 protected:
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(Directory())) {
      names.push_back(entry.path().filename());
    }
    return names;
  }
};

TEST_F(Claim, MakesTheSocketForTheUserAlone) {
  const mode_t mask = umask(0);
  const ClaimedPort claimed(5);
  umask(mask);
  const fs::file_status status = fs::status(Socket(5));
  EXPECT_EQ(status.type(), fs::file_type::socket);
  EXPECT_EQ(status.permissions(), fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_EQ(fs::status(Directory() / ".lock").permissions(),
            fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(Claim, MakesTheRuntimeDirectoryWhenItIsMissing) {
  setenv("MAVRO_RUNTIME_DIR", Outside("new").c_str(), 1);  // NOLINT(concurrency-mt-unsafe)
  const ClaimedPort claimed(5);
  EXPECT_EQ(fs::status(Outside("new")).permissions(), fs::perms::owner_all);
  EXPECT_EQ(SendPortMessage(5, "x"), 0);
}

TEST_F(Claim, FailsWhereNoPortCanBe) {
  EXPECT_EQ(ClaimError(-1), EINVAL);
  EXPECT_EQ(ClaimError(2147483648), EINVAL);
  ASSERT_EQ(chmod(Directory().c_str(), 0777), 0);
  EXPECT_EQ(ClaimError(5), EACCES);
  setenv("MAVRO_RUNTIME_DIR", Outside("no/way").c_str(), 1);  // NOLINT(concurrency-mt-unsafe)
  EXPECT_EQ(ClaimError(5), ENOENT);
}

TEST_F(Claim, TakesOverFromADeadProcess) {
  testing::LeaveStaleSocket(Socket(5));
  testing::LeaveStaleSocket(Directory() / ".port-5.new");
  ASSERT_EQ(SendPortMessage(5, "x"), ECONNREFUSED);
  const ClaimedPort claimed(5);
  EXPECT_EQ(SendPortMessage(5, "x"), 0);
  EXPECT_FALSE(fs::exists(Directory() / ".port-5.new"));
}

TEST_F(Claim, TakesOverFromAKilledListener) {
  ChildProcess listener([](const Talk& talk) { testing::RunListener(talk, 5); });
  ASSERT_EQ(listener.Hear(), "listening");
  listener.Kill();
  ASSERT_TRUE(fs::exists(fs::symlink_status(Socket(5))));
  EXPECT_EQ(ClaimError(5), 0);
}

TEST_F(Claim, LeavesTheSocketOfALiveProcessAlone) {
  const ChildProcess listener([](const Talk& talk) { testing::RunListener(talk, 5); });
  ASSERT_EQ(listener.Hear(), "listening");
  EXPECT_EQ(ClaimError(5), EADDRINUSE);
  EXPECT_EQ(SendPortMessage(5, "still"), 0);
  EXPECT_EQ(listener.Hear(), "control still");
}

TEST_F(Claim, LeavesAProcessAloneThatIsStoppedAndFull) {
  const ChildProcess listener([](const Talk& talk) { testing::RunListener(talk, 5); });
  ASSERT_EQ(listener.Hear(), "listening");
  listener.Stop();
  while (SendPortMessage(5, "x") == 0) {
  }
  EXPECT_EQ(ClaimError(5), EADDRINUSE);
  listener.Continue();
  EXPECT_EQ(listener.Hear(), "control x");
}

TEST_F(Claim, LeavesAloneWhatIsNoSocketOfItsKind) {
  std::ofstream(Socket(1)) << "text";
  EXPECT_EQ(ClaimError(1), EADDRINUSE);
  EXPECT_TRUE(fs::is_regular_file(Socket(1)));
  fs::create_symlink("nowhere", Socket(2));
  EXPECT_EQ(ClaimError(2), EADDRINUSE);
  EXPECT_TRUE(fs::is_symlink(Socket(2)));
  fs::create_directory(Socket(3));
  EXPECT_EQ(ClaimError(3), EADDRINUSE);
  const UniqueFd stream = testing::ListenAt(Socket(4), 4, SOCK_STREAM);
  EXPECT_EQ(ClaimError(4), EADDRINUSE);
}

TEST_F(Claim, RemovesItsFileAtTheEnd) {
  { const ClaimedPort claimed(5); }
  EXPECT_EQ(Names(), std::vector<std::string>{".lock"});
}

TEST_F(Claim, KeepsAFileThatHasTakenThePlaceOfItsOwn) {
  auto claimed = std::make_unique<ClaimedPort>(5);
  fs::remove(Socket(5));
  const UniqueFd other = testing::ListenAt(Socket(5));
  claimed.reset();
  EXPECT_EQ(SendPortMessage(5, "x"), 0);

  auto removed = std::make_unique<ClaimedPort>(6);
  fs::remove(Socket(6));
  removed.reset();
  EXPECT_FALSE(fs::exists(fs::symlink_status(Socket(6))));
}

/// A starter's body: takes the port when it is told to and says how that went.
void ClaimWhenTold(const Talk& talk) {
  talk.Hear();
  try {
    const ClaimedPort claimed(5);
    talk.Say("taken");
    talk.Hear();
  } catch (const std::system_error& error) {
    talk.Say(std::to_string(error.code().value()));
  }
}

TEST_F(Claim, IsGivenToOneOfManyWhoStartAtOnce) {
  for (int round = 0; round < 20; ++round) {
    fs::remove(Socket(5));
    testing::LeaveStaleSocket(Socket(5));
    std::array<std::unique_ptr<ChildProcess>, 6> starters;
    for (auto& starter : starters) {
      starter = std::make_unique<ChildProcess>(ClaimWhenTold);
    }
    for (const auto& starter : starters) {
      starter->Say("go");
    }
    std::multiset<std::string> answers;
    for (const auto& starter : starters) {
      answers.insert(starter->Hear());
    }
    EXPECT_EQ(answers.count("taken"), 1U);
    EXPECT_EQ(answers.count(std::to_string(EADDRINUSE)), starters.size() - 1);
  }
}

}  // namespace

}  // namespace ptick::ports
