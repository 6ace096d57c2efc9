#include "model/model_cases.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdlib>
#include <string_view>

#include "model/model_list.h"
#include "profile/ticks/sort_order.h"

namespace ptick::model {

namespace {

constexpr std::uint64_t kFirstSeed = 20240101;

std::uint64_t FromEnvironment(const char* name, std::uint64_t otherwise) {
  const char* const set = std::getenv(name);  // NOLINT(concurrency-mt-unsafe)
  const std::string_view text = set == nullptr ? "" : set;
  std::uint64_t number = otherwise;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

std::uint64_t FirstSeed() { return FromEnvironment("PTICK_MODEL_SEED", kFirstSeed); }

std::string WithoutLine(const std::string& text, std::size_t begin) {
  const std::size_t end = text.find('\n', begin);
  return text.substr(0, begin) + (end == std::string::npos ? "" : text.substr(end + 1));
}

// Removes lines as long as the difference stays.
Texts Smallest(Texts texts, const std::function<std::string(const Texts&)>& difference) {
  for (bool smaller = true; smaller;) {
    smaller = false;
    for (std::string& text : texts) {
      for (std::size_t begin = 0; begin < text.size();) {
        const std::string whole = text;
        text = WithoutLine(whole, begin);
        if (!difference(texts).empty()) {
          smaller = true;
        } else {
          text = whole;
          begin = std::min(text.find('\n', begin), text.size() - 1) + 1;
        }
      }
    }
  }
  return texts;
}

std::string ShownProfiles(const Texts& texts) {
  std::string shown;
  for (const std::string& text : texts) {
    shown += "profile:\n";
    for (const std::string& line : LinesOf(text)) {
      shown += "  " + Shown(line) + "\n";
    }
  }
  return shown;
}

}  // namespace

void RunCases(std::uint64_t count, const std::function<Case(RandomSource&)>& make_case) {
  const std::uint64_t first = FirstSeed();
  count = FromEnvironment("PTICK_MODEL_CASES", count);
  for (std::uint64_t seed = first; seed < first + count; ++seed) {
    RandomSource random(seed);
    const Case made = make_case(random);
    if (made.difference(made.profiles).empty()) {
      continue;
    }
    const Texts smallest = Smallest(made.profiles, made.difference);
    FAIL() << "PTICK_MODEL_SEED=" << seed << " PTICK_MODEL_CASES=1\n"
           << ShownProfiles(smallest) << made.difference(smallest);
  }
}

void RunBigCase(const std::function<Case(RandomSource&)>& make_case) {
  RandomSource random(FirstSeed());
  const Case made = make_case(random);
  EXPECT_EQ(made.difference(made.profiles), "") << "PTICK_MODEL_SEED=" << FirstSeed();
}

RunOptions RandomOptions(RandomSource& random) {
  RunOptions options;
  options.PerProgram = random.Chance(60);
  options.CpuOption = random.Chance(60);
  options.TickOrder = random.Chance(50) ? SortOrder::kAscending : SortOrder::kDescending;
  options.KeyScriptFile = random.Chance(70) ? "keys" : "";
  options.TypeRateOption = random.Chance(50);
  return options;
}

std::string OptionLetters(const RunOptions& options) {
  std::string letters = "options:";
  letters += options.PerProgram ? " -n" : "";
  letters += options.CpuOption ? " -u" : "";
  letters += options.TickOrder == SortOrder::kAscending ? " -i" : "";
  letters += options.KeyScriptFile.empty() ? "" : " -kkeys";
  letters += options.TypeRateOption ? " -t" : "";
  return letters + "\n";
}

}  // namespace ptick::model
