// Inputs are taken whole or not at all, whatever waits and whatever is kept.

#include "ptick_merge/careful_merge.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "companion/support/no_status_line.h"
#include "support/profiles.h"
#include "support/text_record.h"

namespace ptick::companion {

namespace {

using ptick::testing::LinesOf;
using ptick::testing::Records;
using ptick::testing::TextRecord;

struct Input {
  std::string text;
  TextRecord::End end = TextRecord::End::kReached;
};

/// What is wrong with an input, empty when it was taken.
std::string Take(const Input& input, CarefulMerge& merge) {
  testing::NoProgress progress;
  InputLines lines(std::make_unique<TextRecord>(input.text, 50, input.end), "run", progress.Get());
  const std::optional<Problem> problem = merge.Take(lines);
  return problem ? MessageLine("p", *problem) : "";
}

TEST(CarefulMerge, TakesInputsWholeOrNotAtAll) {
  const std::vector<Input> inputs = {
      {Records({"ticks|5", "trace|A|1|2", "starttime|x"})},
      {Records({"ticks|5", "trace|A|1|2", "trace|B|1|1", "starttime|1"}) + Records({"bogus|1"})},
      {Records({"trace|A|1|3", "perform|cmd|LIST", "trace|C|1|x"}), TextRecord::End::kFails},
      {""},
      {"", TextRecord::End::kFails},
      {Records({"trace|C|1|1", "perform|cmd|LIST", "trace|A|1|1", "hertz|100"})},
  };
  const std::string bogus = "p: run: line 5: unknown record type: PROFILE:bogus ...\n";
  const std::string fails = "p: run: Input/output error\n";
  // From no line that waits to all of them.
  for (std::size_t room = 0; room < 300; ++room) {
    CarefulMerge merge(std::pmr::get_default_resource(), room);
    std::vector<std::string> told;
    for (const Input& input : inputs) {
      told.push_back(Take(input, merge));
    }
    EXPECT_EQ(told, (std::vector<std::string>{"", bogus, fails, "", fails, ""})) << room;
    ProfileMerge left = merge.TakeMerge();
    EXPECT_EQ(LinesOf(left), Records({"ticks|5", "trace|A|1|3", "starttime|x", "trace|C|1|1",
                                      "perform|cmd|LIST", "hertz|100"}))
        << room;
  }
}

// Big tables grow while they are kept.
TEST(CarefulMerge, ComesToTheMergeOfTheGoodInputs) {
  std::mt19937 random(1);
  CarefulMerge careful(std::pmr::get_default_resource(), 1000);
  ProfileMerge plain;
  for (int round = 0; round < 60; ++round) {
    std::string text;
    const auto lines = static_cast<unsigned>(random() % 3000);
    for (unsigned line = 0; line < lines; ++line) {
      text += Records({"trace|P" + std::to_string(random() % 50) + "|" +
                       std::to_string(random() % 1000) + "|" + std::to_string(random() % 9)});
    }
    const bool is_bad = random() % 2 == 0;
    EXPECT_EQ(Take({text + (is_bad ? "PROFILE:x\n" : "")}, careful).empty(), !is_bad);
    if (!is_bad) {
      ptick::testing::AddLines(plain, text);
    }
  }
  ProfileMerge left = careful.TakeMerge();
  EXPECT_EQ(LinesOf(left), LinesOf(plain));
}

}  // namespace

}  // namespace ptick::companion
