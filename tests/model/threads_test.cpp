// Any number of threads, and blocks and batches of any size, leave what one thread leaves.

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "model/model_cases.h"
#include "model/random_fields.h"
#include "model/random_profile.h"
#include "model/threads_difference.h"

namespace ptick::model {

namespace {

constexpr std::array kThreads = {2U, 3U, 8U};

constexpr std::array<std::string_view, 14> kOptions = {"-",   "-n",     "-nu",     "-nui",  "-i",
                                                       "-ni", "-a",     "-p",      "-pv",   "-s",
                                                       "-Av", "-kkeys", "-tkkeys", "-nfsrc"};

// Blocks of a few bytes, batches of a few rows; now and then sizes that a small profile does not
// reach.
ThreadPlan RandomPlan(RandomSource& random) {
  ThreadPlan plan;
  plan.threads = kThreads.at(random.Below(kThreads.size()));
  plan.bytes_alone = random.Chance(50) ? 0 : random.Below(2000);
  plan.block_size = random.Between(1, random.Chance(50) ? 40 : 2000);
  plan.smallest_range = random.Between(1, 100);
  plan.largest_range = plan.smallest_range + random.Below(3000);
  plan.merge_names = random.Below(8);
  plan.rows_alone = random.Chance(50) ? 0 : random.Below(20);
  plan.batch_rows = random.Between(1, 12);
  return plan;
}

// Trace lines of few programs and ticks, so that many are equal; some odd ones, and other lines.
std::string TraceProfile(RandomSource& random) {
  std::string text = random.Chance(50) ? "PROFILE:ticks\t" + RandomTicks(random) + "\n" : "";
  for (std::size_t left = random.Between(1, 200); left > 0; --left) {
    if (random.Chance(5)) {
      text += RandomProfileLine(random) + "\n";
      continue;
    }
    const bool is_odd = random.Chance(5);
    text += random.Chance(2) ? "\tPROFILE:\tTrace\t\t" : "PROFILE:trace\t";
    text += std::string("P") + static_cast<char>('A' + random.Below(5)) + "\t" +
            (random.Chance(5) ? RandomLineNumber(random) : std::to_string(random.Below(9))) + "\t" +
            (is_odd ? RandomTicks(random)
                    : std::to_string(random.Below(random.Chance(10) ? 6000 : 4))) +
            "\n";
  }
  text += random.Chance(3) ? RandomInvalidLine(random) + "\n" : "";
  return text;
}

MemoryPlatform::Record RandomRecord(const std::string& text, RandomSource& random) {
  MemoryPlatform::Record record{text};
  if (random.Chance(10)) {
    record.fails_after = random.Below(text.size() + 1);
  }
  record.is_pipe = random.Chance(20);
  return record;
}

/// What a seed adds to texts.
struct Way {
  std::string option;
  std::vector<MemoryPlatform::Record> records;
  ThreadPlan plan;
};

Case RandomCase(RandomSource& random, std::size_t profiles) {
  Way way{random.Pick(kOptions), {}, RandomPlan(random)};
  Texts texts;
  for (; profiles > 0; --profiles) {
    texts.push_back(random.Chance(60) ? TraceProfile(random) : RandomProfile(random));
    way.records.push_back(RandomRecord(texts.back(), random));
  }
  return Case{texts, [way](const Texts& changed) {
                ThreadsRun run{{way.option}, way.records};
                for (std::size_t i = 0; i < changed.size(); ++i) {
                  run.profiles[i].text = changed[i];
                }
                const std::string difference = ThreadsDifference(run, way.plan);
                return difference.empty() ? "" : way.option + "\n" + difference;
              }};
}

TEST(Threads, ReadOneProfileLikeOneThread) {
  RunCases(3000, [](RandomSource& random) { return RandomCase(random, 1); });
}

TEST(Threads, MergeLikeOneThread) {
  RunCases(2000, [](RandomSource& random) { return RandomCase(random, random.Between(2, 4)); });
}

}  // namespace

}  // namespace ptick::model
