// ptick on as many threads, and with blocks as small, as PTICK_TEST_THREADS and PTICK_TEST_BLOCK
// say. All work is shared, however little it is.

#include <cstdlib>
#include <string>

#include "platform/linux/linux_platform.h"
#include "ptick/driver.h"

namespace {

std::size_t FromEnvironment(const char* name) {
  const char* const set = std::getenv(name);
  return set == nullptr ? 1 : std::stoul(set);
}

}  // namespace

int main(int argc, char** argv) {
  ptick::LinuxPlatform platform(argc, argv);
  ptick::ThreadPlan plan;
  plan.threads = static_cast<unsigned>(FromEnvironment("PTICK_TEST_THREADS"));
  plan.bytes_alone = 0;
  plan.block_size = FromEnvironment("PTICK_TEST_BLOCK");
  plan.smallest_range = plan.largest_range = 3 * plan.block_size;
  plan.merge_names = 2;
  plan.rows_alone = 0;
  plan.batch_rows = 3;
  return ptick::RunPtick(platform, plan);
}
