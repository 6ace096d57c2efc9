#include <gtest/gtest.h>
#include <sys/time.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/ports/port_sender.h"
#include "support/child_process.h"
#include "support/port_fixture.h"

namespace ptick::ports {

namespace {

using std::chrono::milliseconds;
using testing::ChildProcess;
using testing::Talk;

/// Long enough to be sure that no answer comes, where the peer has said that it gives none.
constexpr milliseconds kShort(30);

class MonitorReply : public testing::PortTest {};

TEST_F(MonitorReply, IsTheResult) {
  for (const int result : {0, 1, 22, 255, 256, -5, 2147483647}) {
    const ChildProcess listener(
        [result](const Talk& talk) { testing::RunListener(talk, 5, result); });
    EXPECT_EQ(listener.Hear(), "listening");
    EXPECT_EQ(MonitorOn(5, "out.txt", "opts"), result);
    EXPECT_EQ(MonitorOff(5), result);
  }
}

TEST_F(MonitorReply, ComesAfterTheRequestHasBeenSeen) {
  const ChildProcess listener([](const Talk& talk) { testing::RunListener(talk, 5); });
  EXPECT_EQ(listener.Hear(), "listening");
  EXPECT_EQ(MonitorOn(5, "out.txt", "opts"), 0);
  EXPECT_EQ(listener.Hear(), "on out.txt|opts");
  EXPECT_EQ(MonitorOff(5), 0);
  EXPECT_EQ(listener.Hear(), "off");
}

TEST_F(MonitorReply, AnswersTheRequestAsItIsOnTheWire) {
  const ChildProcess peer([this](const Talk& talk) {
    const UniqueFd listener = testing::ListenAt(Socket(5));
    talk.Say("listening");
    for (;;) {
      const UniqueFd connection = testing::AcceptFrom(listener);
      talk.Say(testing::ReadPacket(connection));
      testing::WritePacket(connection, "0");
    }
  });
  ASSERT_EQ(peer.Hear(), "listening");
  const auto packet_of = [&peer](int error) { return error == 0 ? peer.Hear() : "(failed)"; };
  EXPECT_EQ(packet_of(MonitorOn(5, "out.txt", "a b")), "KIVA:ON\tout.txt\ta b");
  EXPECT_EQ(packet_of(MonitorOn(5, "", "")), "KIVA:ON\t\t");
  EXPECT_EQ(packet_of(MonitorOn(5, "f", "a\tb")), "KIVA:ON\tf\ta\tb");
  EXPECT_EQ(packet_of(MonitorOff(5)), "KIVA:OFF");
}

TEST_F(MonitorReply, IsNotAskedForWithATabInTheFileName) {
  EXPECT_EQ(MonitorOn(5, "a\tb", "o"), EINVAL);
}

TEST_F(MonitorReply, IsANumberOrAnError) {
  struct Row {
    std::string reply;
    int want;
  };
  const std::vector<Row> rows = {
      {"0", 0},
      {"007", 7},
      {"-5", -5},
      {"2147483647", 2147483647},
      {"2147483648", EPROTO},
      {"OK", EPROTO},
      {"7x", EPROTO},
      {"7\n", EPROTO},
      {" 7", EPROTO},
      {"+7", EPROTO},
      {"5.5", EPROTO},
      {std::string("7\0", 2), EPROTO},
      {std::string(32, '0'), 0},
      {std::string(33, '0'), EPROTO},
      {std::string(100000, '7'), EPROTO},
      {"", ECONNRESET},
  };
  const ChildProcess peer([this](const Talk& talk) {
    const UniqueFd listener = testing::ListenAt(Socket(5));
    talk.Say("listening");
    for (;;) {
      const UniqueFd connection = testing::AcceptFrom(listener);
      testing::ReadPacket(connection);
      testing::WritePacket(connection, talk.Hear().substr(1));
    }
  });
  ASSERT_EQ(peer.Hear(), "listening");
  for (const Row& row : rows) {
    peer.Say("=" + row.reply);  // an empty message would be none
    EXPECT_EQ(MonitorOff(5), row.want) << "'" << row.reply.substr(0, 40) << "'";
  }
}

TEST_F(MonitorReply, IsNotWaitedForWithoutEnd) {
  const ChildProcess peer([this](const Talk& talk) {
    const UniqueFd listener = testing::ListenAt(Socket(5));
    talk.Say("listening");
    const UniqueFd accepted = testing::AcceptFrom(listener);
    talk.Hear();
  });
  ASSERT_EQ(peer.Hear(), "listening");
  EXPECT_EQ(MonitorOn(5, "f", "o", kShort), ETIMEDOUT);
  EXPECT_EQ(MonitorOff(5, kShort), ETIMEDOUT) << "a connection that is not even taken in";
  EXPECT_EQ(MonitorOff(5, milliseconds(0)), ETIMEDOUT);
}

TEST_F(MonitorReply, IsNotWaitedForWithoutEndFromAStoppedProcess) {
  const ChildProcess listener([](const Talk& talk) { testing::RunListener(talk, 5, 7); });
  ASSERT_EQ(listener.Hear(), "listening");
  listener.Stop();
  EXPECT_EQ(MonitorOff(5, kShort), ETIMEDOUT);
  listener.Continue();
  EXPECT_EQ(listener.Hear(), "off");
  EXPECT_EQ(MonitorOff(5), 7) << "the late answer to the first has disturbed nothing";
}

/// Signals with a handler, so that they interrupt what waits.
class Interrupts {
 public:
  Interrupts() {
    struct sigaction action {};
    action.sa_handler = [](int) {};
    sigaction(SIGALRM, &action, &before_);
  }
  Interrupts(const Interrupts&) = delete;
  Interrupts& operator=(const Interrupts&) = delete;
  ~Interrupts() {
    Every(0);
    sigaction(SIGALRM, &before_, nullptr);
  }
  static void Every(suseconds_t microseconds) {
    const itimerval timer{{0, microseconds}, {0, microseconds}};
    setitimer(ITIMER_REAL, &timer, nullptr);
  }

 private:
  struct sigaction before_ {};
};

TEST_F(MonitorReply, ComesThroughAFlurryOfSignals) {
  const Interrupts interrupts;
  const ChildProcess peer([this](const Talk& talk) {
    const UniqueFd listener = testing::ListenAt(Socket(5));
    talk.Say("listening");
    const UniqueFd connection = testing::AcceptFrom(listener);
    testing::ReadPacket(connection);
    for (int i = 0; i < 100; ++i) {
      kill(getppid(), SIGALRM);
    }
    testing::WritePacket(connection, "7");
  });
  ASSERT_EQ(peer.Hear(), "listening");
  EXPECT_EQ(MonitorOff(5), 7);
}

TEST_F(MonitorReply, IsGivenUpInTimeInAStreamOfSignals) {
  const ChildProcess peer([this](const Talk& talk) {
    const UniqueFd listener = testing::ListenAt(Socket(5));
    talk.Say("listening");
    talk.Hear();
  });
  ASSERT_EQ(peer.Hear(), "listening");
  const Interrupts interrupts;
  Interrupts::Every(1000);
  EXPECT_EQ(MonitorOff(5, kShort), ETIMEDOUT);
}

TEST_F(MonitorReply, IsMissingWhenTheProcessDiesOverTheRequest) {
  enum class Moment { kBeforeReading, kAfterReading };
  for (const Moment moment : {Moment::kBeforeReading, Moment::kAfterReading}) {
    ChildProcess peer([this, moment](const Talk& talk) {
      const UniqueFd listener = testing::ListenAt(Socket(5));
      talk.Say("listening");
      const UniqueFd connection = testing::AcceptFrom(listener);
      testing::AwaitReadable(connection.Get());
      if (moment == Moment::kAfterReading) {
        testing::ReadPacket(connection);
      }
      raise(SIGKILL);
    });
    ASSERT_EQ(peer.Hear(), "listening");
    EXPECT_EQ(MonitorOff(5), ECONNRESET);
    peer.Kill();
    std::filesystem::remove(Socket(5));
  }
}

TEST_F(MonitorReply, IsMissingWhenTheProcessDiesBeforeItTakesTheConnectionIn) {
  const ChildProcess peer([this](const Talk& talk) {
    const UniqueFd listener = testing::ListenAt(Socket(5));
    talk.Say("listening");
    testing::AwaitReadable(listener.Get());
    raise(SIGKILL);
  });
  ASSERT_EQ(peer.Hear(), "listening");
  const int error = MonitorOff(5);
  EXPECT_TRUE(error == ECONNRESET || error == ECONNREFUSED) << error;
}

}  // namespace

}  // namespace ptick::ports
