#include "platform/linux/wait_ready.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <vector>

#include "support/forked.h"

namespace ptick {

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

TEST(WaitReadyTest, TellsWhatIsReady) {
  std::array<int, 2> ends = {};
  ASSERT_EQ(::pipe(ends.data()), 0);
  std::array<pollfd, 2> sources = {{{.fd = ends[0], .events = POLLIN, .revents = POLLERR},
                                    {.fd = ends[1], .events = POLLOUT, .revents = POLLERR}}};
  EXPECT_TRUE(WaitReady(sources, -1));
  EXPECT_EQ(sources[0].revents, 0);
  EXPECT_EQ(sources[1].revents, POLLOUT);
  ::close(ends[0]);
  ::close(ends[1]);
}

TEST(WaitReadyTest, AnEndOfTimeAndASignalAreNoFailure) {
  EXPECT_TRUE(WaitReady({}, 0));
  EXPECT_EQ(testing::CheckForked([] {
              ::signal(SIGALRM, [](int) {});
              const itimerval soon = {.it_interval = {.tv_sec = 0, .tv_usec = 1000},
                                      .it_value = {.tv_sec = 0, .tv_usec = 1000}};
              ::setitimer(ITIMER_REAL, &soon, nullptr);
              pollfd never = {.fd = -1, .events = POLLIN, .revents = POLLIN};
              EXPECT_TRUE(WaitReady({&never, 1}, -1));
              EXPECT_EQ(never.revents, 0);
            }),
            0);
}

TEST(WaitReadyTest, AFailureTakesAMoment) {
  EXPECT_EQ(testing::CheckForked([] {
              const rlimit few = {.rlim_cur = 3, .rlim_max = 3};
              ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &few), 0);
              // More sources than there may be descriptors: the system refuses to wait.
              std::vector<pollfd> sources(
                  4, {.fd = STDIN_FILENO, .events = POLLOUT, .revents = POLLOUT});
              const Clock::time_point start = Clock::now();
              EXPECT_FALSE(WaitReady(sources, -1));
              EXPECT_GE(Clock::now() - start, 5ms);
              EXPECT_EQ(sources[0].revents, 0);
            }),
            0);
}

}  // namespace

}  // namespace ptick
