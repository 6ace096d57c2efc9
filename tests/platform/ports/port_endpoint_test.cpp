#include "platform/linux/ports/port_endpoint.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include "platform/linux/ports/port_sender.h"
#include "support/child_process.h"
#include "support/port_fixture.h"

namespace ptick::ports {

namespace {

using Kind = PortRequest::Kind;
using std::chrono::milliseconds;
using testing::ChildProcess;
using testing::Talk;

constexpr milliseconds kNow(0);

class Endpoint : public testing::PortTest {
 protected:
  /// The next control text that is there already; "(none)" when there is none.
  static std::string NextText(PortEndpoint& endpoint) {
    const auto received = endpoint.Receive(kNow);
    return received ? received->request.text : "(none)";
  }
};

TEST_F(Endpoint, ReceivesControlTexts) {
  PortEndpoint endpoint(5);
  EXPECT_EQ(SendPortMessage(5, "TICKCTL:STOP"), 0);
  EXPECT_EQ(SendPortMessage(5, std::string("a\0b\n", 4)), 0);
  EXPECT_EQ(NextText(endpoint), "TICKCTL:STOP");
  EXPECT_EQ(NextText(endpoint), std::string("a\0b\n", 4));
  EXPECT_EQ(NextText(endpoint), "(none)");
}

TEST_F(Endpoint, ReceivesInTheOrderOfSending) {
  PortEndpoint endpoint(5);
  for (int i = 0; i < 50; ++i) {
    ASSERT_EQ(SendPortMessage(5, std::to_string(i)), 0);
  }
  for (int i = 0; i < 50; ++i) {
    EXPECT_EQ(NextText(endpoint), std::to_string(i));
  }
}

TEST_F(Endpoint, GivesMonitorRequestsToBeAnswered) {
  PortEndpoint endpoint(5);
  const ChildProcess caller([](const Talk& talk) {
    talk.Say(std::to_string(MonitorOn(5, "out.txt", "a b")));
    talk.Say(std::to_string(MonitorOff(5)));
  });
  auto on = endpoint.Receive(std::nullopt).value();
  EXPECT_EQ(on.request.what, Kind::kMonitorOn);
  EXPECT_EQ(on.request.file + "|" + on.request.options, "out.txt|a b");
  EXPECT_EQ(on.Reply(17), 0);
  EXPECT_EQ(caller.Hear(), "17");
  auto off = endpoint.Receive(std::nullopt).value();
  EXPECT_EQ(off.request.what, Kind::kMonitorOff);
  EXPECT_EQ(off.Reply(0), 0);
  EXPECT_EQ(caller.Hear(), "0");
}

TEST_F(Endpoint, AnswersOnce) {
  PortEndpoint endpoint(5);
  const UniqueFd peer = testing::ConnectTo(Socket(5));
  testing::WritePacket(peer, "KIVA:OFF");
  auto off = endpoint.Receive(kNow).value();
  EXPECT_EQ(off.Reply(17), 0);
  EXPECT_EQ(off.Reply(18), ENOTCONN);
  EXPECT_EQ(testing::ReadPacket(peer), "17");
  EXPECT_EQ(testing::ReadPacket(peer), "") << "the end of the connection";
}

TEST_F(Endpoint, RefusesWhatGoesUnanswered) {
  PortEndpoint endpoint(5);
  const ChildProcess caller([](const Talk& talk) { talk.Say(std::to_string(MonitorOff(5))); });
  endpoint.Receive(std::nullopt);
  EXPECT_EQ(caller.Hear(), std::to_string(ECONNRESET));
}

TEST_F(Endpoint, HasNothingToAnswerToAControlMessage) {
  PortEndpoint endpoint(5);
  ASSERT_EQ(SendPortMessage(5, "x"), 0);
  auto received = endpoint.Receive(kNow);
  ASSERT_TRUE(received);
  EXPECT_EQ(received->Reply(0), ENOTCONN);
}

TEST_F(Endpoint, NoticesThatTheOneToAnswerHasGone) {
  PortEndpoint endpoint(5);
  UniqueFd peer = testing::ConnectTo(Socket(5));
  testing::WritePacket(peer, "KIVA:OFF");
  peer.Close();
  auto received = endpoint.Receive(kNow);
  ASSERT_TRUE(received);
  EXPECT_EQ(received->Reply(0), ECONNREFUSED);
}

TEST_F(Endpoint, AnswersMalformedMonitorRequestsItself) {
  PortEndpoint endpoint(5);
  for (const char* packet : {"KIVA:", "KIVA:ON", "KIVA:ON\tfile", "KIVA:STATUS"}) {
    const UniqueFd peer = testing::ConnectTo(Socket(5));
    testing::WritePacket(peer, packet);
    EXPECT_FALSE(endpoint.Receive(kNow)) << packet;
    EXPECT_EQ(testing::ReadPacket(peer), "22") << packet;
  }
}

TEST_F(Endpoint, IgnoresConnectionsThatSayNothing) {
  PortEndpoint endpoint(5);
  testing::ConnectTo(Socket(5)).Close();
  const UniqueFd empty = testing::ConnectTo(Socket(5));
  testing::WritePacket(empty, "");
  EXPECT_FALSE(endpoint.Receive(kNow));
  ASSERT_EQ(SendPortMessage(5, "next"), 0);
  EXPECT_EQ(NextText(endpoint), "next");
}

TEST_F(Endpoint, ReadsOnePacketOfAConnection) {
  PortEndpoint endpoint(5);
  const UniqueFd peer = testing::ConnectTo(Socket(5));
  testing::WritePacket(peer, "first");
  testing::WritePacket(peer, "second");
  EXPECT_EQ(NextText(endpoint), "first");
  EXPECT_EQ(NextText(endpoint), "(none)");
}

TEST_F(Endpoint, IsNotHeldUpBySilentPeers) {
  PortEndpoint endpoint(5);
  std::vector<UniqueFd> silent;
  for (std::size_t i = 0; i < 3 * PortEndpoint::kPendingLimit; ++i) {
    silent.push_back(testing::ConnectTo(Socket(5)));
    EXPECT_FALSE(endpoint.Receive(kNow));
  }
  ASSERT_EQ(SendPortMessage(5, "through"), 0);
  EXPECT_EQ(NextText(endpoint), "through");
}

TEST_F(Endpoint, DropsTheOldestOfTooManySilentPeers) {
  PortEndpoint endpoint(5);
  std::vector<UniqueFd> silent;
  for (std::size_t i = 0; i < PortEndpoint::kPendingLimit + 1; ++i) {
    silent.push_back(testing::ConnectTo(Socket(5)));
    EXPECT_FALSE(endpoint.Receive(kNow));
  }
  EXPECT_EQ(testing::ReadPacket(silent.front()), "") << "the end of the connection";
  testing::WritePacket(silent.back(), "late");
  EXPECT_EQ(NextText(endpoint), "late");
  testing::WritePacket(silent[1], "later");
  EXPECT_EQ(NextText(endpoint), "later");
}

/// A connection that can send packets beyond what the system allows everybody; none without the
/// right to.
UniqueFd ConnectWithRoom(const std::filesystem::path& path) {
  UniqueFd peer = testing::ConnectTo(path);
  const int size = 1 << 20;
  if (setsockopt(peer.Get(), SOL_SOCKET, SO_SNDBUFFORCE, &size, sizeof size) != 0) {
    return {};
  }
  return peer;
}

TEST_F(Endpoint, ReceivesTheLongestRequests) {
  PortEndpoint endpoint(5);
  const UniqueFd peer = ConnectWithRoom(Socket(5));
  if (!peer.IsOpen()) {
    GTEST_SKIP() << "needs the right to send long packets";
  }
  const std::string longest(kMaxRequest, 'x');
  ASSERT_TRUE(testing::WritePacket(peer, longest));
  EXPECT_EQ(NextText(endpoint), longest);
}

TEST_F(Endpoint, DropsRequestsThatAreTooLong) {
  PortEndpoint endpoint(5);
  const UniqueFd peer = ConnectWithRoom(Socket(5));
  if (!peer.IsOpen()) {
    GTEST_SKIP() << "needs the right to send long packets";
  }
  ASSERT_TRUE(testing::WritePacket(peer, std::string(kMaxRequest + 1, 'x')));
  EXPECT_EQ(NextText(endpoint), "(none)");
  EXPECT_EQ(testing::ReadPacket(peer), "") << "the end of the connection";
}

TEST_F(Endpoint, ListensToProcessesOfTheSameUserOnly) {
  if (geteuid() != 0) {
    GTEST_SKIP() << "needs the right to become another user";
  }
  PortEndpoint endpoint(5);
  std::filesystem::permissions(Directory().parent_path(), std::filesystem::perms(0755));
  std::filesystem::permissions(Directory(), std::filesystem::perms(0755));
  ASSERT_EQ(chmod(Socket(5).c_str(), 0666), 0);
  const ChildProcess other([this](const Talk& talk) {
    if (seteuid(65534) != 0) {
      return;
    }
    const UniqueFd peer = testing::ConnectTo(Socket(5));
    testing::WritePacket(peer, "KIVA:OFF");
    talk.Say("sent");
    talk.Say("answer '" + testing::ReadPacket(peer) + "'");
  });
  ASSERT_EQ(other.Hear(), "sent");
  EXPECT_FALSE(endpoint.Receive(kNow));
  EXPECT_EQ(other.Hear(), "answer ''");
}

TEST_F(Endpoint, IsPolledThroughItsDescriptor) {
  PortEndpoint endpoint(5);
  pollfd wait{endpoint.Descriptor(), POLLIN, 0};
  EXPECT_EQ(poll(&wait, 1, 0), 0);
  ASSERT_EQ(SendPortMessage(5, "x"), 0);
  EXPECT_EQ(poll(&wait, 1, 0), 1);
  EXPECT_EQ(NextText(endpoint), "x");
  EXPECT_EQ(poll(&wait, 1, 0), 0);

  const UniqueFd slow = testing::ConnectTo(Socket(5));
  EXPECT_FALSE(endpoint.Receive(kNow));
  EXPECT_EQ(poll(&wait, 1, 0), 0) << "a silent peer waits without noise";
  testing::WritePacket(slow, "y");
  EXPECT_EQ(poll(&wait, 1, 0), 1);
  EXPECT_EQ(NextText(endpoint), "y");
}

TEST_F(Endpoint, WaitsForAsLongAsItIsTold) {
  PortEndpoint endpoint(5);
  EXPECT_FALSE(endpoint.Receive(milliseconds(-1)));
  EXPECT_FALSE(endpoint.Receive(milliseconds(1)));
  const ChildProcess sender([](const Talk& talk) {
    talk.Hear();
    SendPortMessage(5, "x");
  });
  sender.Say("go");
  const auto received = endpoint.Receive(milliseconds::max());
  ASSERT_TRUE(received);
  EXPECT_EQ(received->request.text, "x");
}

TEST_F(Endpoint, SaysWhenThereIsNoDescriptorLeft) {
  PortEndpoint endpoint(5);
  const UniqueFd silent = testing::ConnectTo(Socket(5));
  EXPECT_FALSE(endpoint.Receive(kNow));
  const UniqueFd waiting = testing::ConnectTo(Socket(5));
  const UniqueFd waiting_too = testing::ConnectTo(Socket(5));
  rlimit limit{};
  ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &limit), 0);
  const rlimit none{0, limit.rlim_max};
  ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
  try {
    endpoint.Receive(kNow);
    ADD_FAILURE() << "nothing thrown";
  } catch (const std::system_error& error) {
    EXPECT_EQ(error.code().value(), EMFILE);
  }
  ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &limit), 0);
  EXPECT_EQ(testing::ReadPacket(silent), "") << "dropped to make room";
  testing::WritePacket(waiting, "after");
  EXPECT_EQ(NextText(endpoint), "after");
}

}  // namespace

}  // namespace ptick::ports
