// Profiles of any bytes, divided by zero bytes, under every report: several threads, with blocks
// and batches of any size, leave what one thread leaves.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/fuzz_input.h"
#include "fuzz/require.h"
#include "model/threads_difference.h"

namespace {

using ptick::fuzz::RequireEqual;

constexpr std::size_t kMaxProfiles = 4;

constexpr std::array<std::string_view, 10> kOptions = {"-",  "-n",  "-nu", "-nui",   "-i",
                                                       "-a", "-pv", "-Av", "-kkeys", "-nfsrc"};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ptick::fuzz::FuzzInput input(data, size);
  ptick::model::ThreadsRun run;
  run.options = {std::string(kOptions.at(input.TakeByte() % kOptions.size()))};
  ptick::ThreadPlan plan;
  plan.threads = static_cast<unsigned>(input.TakeBetween(2, 8));
  plan.bytes_alone = input.TakeByte();
  plan.block_size = std::size_t{1} + input.TakeByte();
  plan.smallest_range = std::size_t{1} + input.TakeByte();
  plan.largest_range = 2 * plan.smallest_range;
  const std::uint8_t few = input.TakeByte();
  plan.rows_alone = few % 8U;
  plan.merge_names = few / 8U % 8U;
  plan.batch_rows = std::size_t{1} + input.TakeByte() % 8U;
  do {
    ptick::MemoryPlatform::Record profile{input.TakeUpTo('\0')};
    if (profile.text.ends_with("\x01")) {
      profile.fails_after = profile.text.size() / 2;
    }
    run.profiles.push_back(profile);
  } while (run.profiles.size() < kMaxProfiles && !input.Empty());
  RequireEqual("", ptick::model::ThreadsDifference(run, plan),
               "threads do not change what is left");
  return 0;
}
