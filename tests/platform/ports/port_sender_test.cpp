#include "platform/linux/ports/port_sender.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "support/child_process.h"
#include "support/port_fixture.h"

namespace ptick::ports {

namespace {

namespace fs = std::filesystem;
using testing::ChildProcess;
using testing::Talk;

class Ports : public testing::PortTest {
 protected:
  /// A process that listens on `port` and tells what it gets.
  static std::unique_ptr<ChildProcess> Listener(std::int64_t port) {
    auto child = std::make_unique<ChildProcess>(
        [port](const Talk& talk) { testing::RunListener(talk, port); });
    EXPECT_EQ(child->Hear(), "listening");
    return child;
  }
};

TEST_F(Ports, DeliverTextByteForByte) {
  const auto listener = Listener(5);
  std::string all_bytes = "TICKCTL:";
  for (int byte = 0; byte < 256; ++byte) {
    all_bytes += static_cast<char>(byte);
  }
  for (const std::string& text :
       {std::string("TICKCTL:STOP"), std::string("TICKCTL:"), all_bytes, std::string("\0\n", 2),
        std::string("x"), "TICKCTL:" + std::string(200000, 'y')}) {
    EXPECT_EQ(SendPortMessage(5, text), 0);
    EXPECT_EQ(listener->Hear(), "control " + text);
  }
}

TEST_F(Ports, DeliverToThePortNamedAndNoOther) {
  const auto five = Listener(5);
  const auto zero = Listener(0);
  const auto highest = Listener(2147483647);
  EXPECT_EQ(SendPortMessage(2147483647, "C"), 0);
  EXPECT_EQ(SendPortMessage(0, "A"), 0);
  EXPECT_EQ(SendPortMessage(5, "B"), 0);
  EXPECT_EQ(zero->Hear(), "control A");
  EXPECT_EQ(five->Hear(), "control B");
  EXPECT_EQ(highest->Hear(), "control C");
  EXPECT_EQ(ListeningPorts(0, 2147483647), (std::vector<std::int64_t>{0, 5, 2147483647}));
}

TEST_F(Ports, RefuseNumbersThatAreNoPort) {
  for (const std::int64_t port :
       {std::int64_t{-1}, std::int64_t{2147483648}, std::numeric_limits<std::int64_t>::max(),
        std::numeric_limits<std::int64_t>::min()}) {
    EXPECT_EQ(SendPortMessage(port, "TICKCTL:X"), EINVAL) << port;
    EXPECT_EQ(MonitorOn(port, "", ""), EINVAL) << port;
    EXPECT_EQ(MonitorOff(port), EINVAL) << port;
  }
}

TEST_F(Ports, RefuseAnEmptyText) {
  const auto listener = Listener(5);
  EXPECT_EQ(SendPortMessage(5, ""), EINVAL);
}

TEST_F(Ports, RefuseTextThatIsTooLong) {
  const auto listener = Listener(5);
  for (const std::size_t size : {std::size_t{256} * 1024 + 1, std::size_t{5} << 20}) {
    EXPECT_EQ(SendPortMessage(5, std::string(size, 'x')), EMSGSIZE) << size;
    EXPECT_EQ(MonitorOn(5, "", std::string(size, 'x')), EMSGSIZE) << size;
  }
  EXPECT_EQ(SendPortMessage(5, "next"), 0);
  EXPECT_EQ(listener->Hear(), "control next");
}

TEST_F(Ports, SayWhyNobodyIsThere) {
  std::ofstream(Socket(2)) << "no socket";
  testing::LeaveStaleSocket(Socket(3));
  const auto listener = Listener(4);
  fs::create_symlink(Socket(4), Socket(5));
  fs::create_directory(Socket(6));
  fs::create_symlink("nowhere", Socket(7));
  const UniqueFd stream = testing::ListenAt(Socket(8), 4, SOCK_STREAM);
  const std::vector<std::pair<std::int64_t, int>> rows = {
      {1, ENOENT},       {2, ECONNREFUSED}, {3, ECONNREFUSED}, {5, ECONNREFUSED},
      {6, ECONNREFUSED}, {7, ECONNREFUSED}, {8, EPROTOTYPE},
  };
  for (const auto& [port, want] : rows) {
    EXPECT_EQ(SendPortMessage(port, "TICKCTL:X"), want) << port;
    EXPECT_EQ(MonitorOn(port, "f", "o"), want) << port;
    EXPECT_EQ(MonitorOff(port), want) << port;
  }
}

TEST_F(Ports, AreGoneWithAProcessThatWasKilled) {
  const auto listener = Listener(5);
  EXPECT_EQ(SendPortMessage(5, "one"), 0);
  listener->Kill();
  EXPECT_EQ(SendPortMessage(5, "two"), ECONNREFUSED);
  EXPECT_EQ(MonitorOff(5), ECONNREFUSED);
  EXPECT_EQ(ListeningPorts(0, 9), std::vector<std::int64_t>{5}) << "the file is still there";
}

TEST_F(Ports, QueueForAProcessThatIsStopped) {
  const auto listener = Listener(5);
  listener->Stop();
  std::size_t sent = 0;
  int error = 0;
  while ((error = SendPortMessage(5, "TICKCTL:" + std::to_string(sent))) == 0 && sent < 10000) {
    ++sent;
  }
  EXPECT_EQ(error, EAGAIN);
  EXPECT_GE(sent, 16U);
  EXPECT_EQ(MonitorOff(5), EAGAIN);
  listener->Continue();
  for (std::size_t i = 0; i < sent; ++i) {
    EXPECT_EQ(listener->Hear(), "control TICKCTL:" + std::to_string(i));
  }
  EXPECT_EQ(SendPortMessage(5, "TICKCTL:again"), 0);
}

TEST_F(Ports, SpeakToProcessesOfTheSameUserOnly) {
  if (geteuid() != 0) {
    GTEST_SKIP() << "needs the right to become another user";
  }
  const ChildProcess other([this](const Talk& talk) {
    // The rights that count are those at the time of listen.
    const UniqueFd bound = testing::ListenAt(Socket(5));
    if (seteuid(65534) != 0 || listen(bound.Get(), 4) != 0) {
      return;
    }
    talk.Say("listening");
    talk.Say("got '" + testing::ReadPacket(testing::AcceptFrom(bound)) + "'");
    talk.Hear();
  });
  ASSERT_EQ(other.Hear(), "listening");
  EXPECT_EQ(SendPortMessage(5, "TICKCTL:SECRET"), EACCES);
  EXPECT_EQ(other.Hear(), "got ''");
  EXPECT_EQ(MonitorOn(5, "f", "o"), EACCES);
  EXPECT_EQ(MonitorOff(5), EACCES);
}

TEST_F(Ports, WorkHoweverLongTheNameOfTheDirectoryIs) {
  const fs::path deep = Directory() / std::string(200, 'd') / std::string(200, 'e');
  fs::create_directories(deep);
  setenv("MAVRO_RUNTIME_DIR", deep.c_str(), 1);  // NOLINT(concurrency-mt-unsafe)
  const auto listener = Listener(2147483647);
  EXPECT_EQ(SendPortMessage(2147483647, "TICKCTL:DEEP"), 0);
  EXPECT_EQ(listener->Hear(), "control TICKCTL:DEEP");
}

TEST_F(Ports, AreListedFromOnePassOverTheDirectory) {
  for (const char* name : {"port-10", "port-9", "port-0", "port-2147483647", "port-2147483648",
                           "port-007", "port-", "port-x", "port-5.old", ".port-6.new", "other"}) {
    std::ofstream(Directory() / name) << "";
  }
  using Want = std::vector<std::int64_t>;
  constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
  EXPECT_EQ(ListeningPorts(0, kMax), (Want{0, 9, 10, 2147483647}));
  EXPECT_EQ(ListeningPorts(9, 9), Want{9});
  EXPECT_EQ(ListeningPorts(1, 10), (Want{9, 10}));
  EXPECT_EQ(ListeningPorts(10, 9), Want{});
  EXPECT_EQ(ListeningPorts(11, 2147483646), Want{});
  EXPECT_EQ(ListeningPorts(std::numeric_limits<std::int64_t>::min(), kMax),
            (Want{0, 9, 10, 2147483647}));
}

TEST_F(Ports, FailOneByOneWhereTenThousandHaveDied) {
  constexpr std::int64_t kCount = 10000;
  for (std::int64_t port = 0; port < kCount; ++port) {
    testing::LeaveStaleSocket(Socket(port * 100));
  }
  const auto listener = Listener(77777);
  const std::vector<std::int64_t> ports = ListeningPorts(0, 999999999);
  EXPECT_EQ(ports.size(), kCount + 1);
  EXPECT_TRUE(std::ranges::is_sorted(ports));
  for (const std::int64_t port : ports) {
    EXPECT_EQ(SendPortMessage(port, "TICKCTL:X"), port == 77777 ? 0 : ECONNREFUSED) << port;
  }
  EXPECT_EQ(listener->Hear(), "control TICKCTL:X");
}

TEST_F(Ports, LeaveNoDescriptorOpen) {
  const auto count = [] {
    return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
  };
  const auto listener = Listener(5);
  testing::LeaveStaleSocket(Socket(6));
  const auto before = count();
  SendPortMessage(5, "TICKCTL:X");
  SendPortMessage(5, std::string(std::size_t{1} << 20, 'x'));
  SendPortMessage(6, "TICKCTL:X");
  SendPortMessage(7, "TICKCTL:X");
  MonitorOn(5, "f", "o");
  MonitorOff(6);
  ListeningPorts(0, 9);
  EXPECT_EQ(count(), before);
}

}  // namespace

}  // namespace ptick::ports
