#include "platform/linux/processors.h"

#include <gtest/gtest.h>
#include <sched.h>

#include <thread>

namespace ptick {

namespace {

TEST(Processors, AreThoseOfTheAffinity) {
  cpu_set_t allowed;
  ASSERT_EQ(sched_getaffinity(0, sizeof allowed, &allowed), 0);
  EXPECT_EQ(CountProcessors(), static_cast<unsigned>(CPU_COUNT(&allowed)));

  unsigned pinned = 0;
  std::thread([&] {
    std::size_t first = 0;
    while (!CPU_ISSET(first, &allowed)) {
      ++first;
    }
    cpu_set_t one;
    CPU_ZERO(&one);
    CPU_SET(first, &one);
    ASSERT_EQ(sched_setaffinity(0, sizeof one, &one), 0);
    pinned = CountProcessors();
  }).join();
  EXPECT_EQ(pinned, 1U);
}

}  // namespace

}  // namespace ptick
