#include "profile/merge_inputs.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "support/memory_platform.h"

namespace ptick {

namespace {

constexpr std::size_t kBlockSize = 20;

std::string Lines(char letter, int count) {
  std::string lines;
  for (int line = 0; line < count; ++line) {
    lines += letter + std::to_string(line) + "\n";
  }
  return lines;
}

/// Profiles named a, b and so on.
class MergeInputsTest : public ::testing::Test {
 protected:
  void Add(const MemoryPlatform::Record& record) {
    const auto letter = static_cast<char>('a' + names_.size());
    names_.emplace_back(1, letter);
    platform_.files["."][names_.back()] = record;
  }

  MergeInputs& Open() {
    for (const std::string& name : names_) {
      inputs_.push_back({&name});
    }
    tell_ = [this](const ReadProblem& problem) {
      told_.push_back(problem.name + " " + std::to_string(problem.error));
    };
    return blocks_.emplace(inputs_, platform_, tell_, kBlockSize);
  }

  static std::string ReadAll(MergeInputs& inputs) {
    std::string all;
    for (MergeText text; inputs.Begin(text);) {
      inputs.Read(text);
      all += text.block;
    }
    return all;
  }

  MemoryPlatform platform_;
  std::vector<std::string> names_;
  std::vector<MergeInput> inputs_;
  ProblemHandler tell_;
  std::vector<std::string> told_;
  std::optional<MergeInputs> blocks_;
};

TEST_F(MergeInputsTest, GivesAllLinesInOrder) {
  Add({Lines('a', 100)});
  Add({Lines('b', 1)});
  Add({Lines('c', 100), std::nullopt, true});
  Add({""});
  Add({"no end"});
  MergeInputs& inputs = Open();
  EXPECT_EQ(ReadAll(inputs), Lines('a', 100) + Lines('b', 1) + Lines('c', 100) + "no end\n");
  EXPECT_EQ(inputs.FirstName(), "a");
  EXPECT_FALSE(inputs.HasBrokenOff());
  EXPECT_TRUE(told_.empty());
}

TEST_F(MergeInputsTest, GivesRangesThatCanBeReadInAnyOrder) {
  Add({Lines('a', 100)});
  MergeInputs& inputs = Open();
  std::vector<std::string> blocks;
  MergeText block;
  ASSERT_TRUE(inputs.Begin(block));
  EXPECT_FALSE(block.block.empty()) << "the first one has been read";
  blocks.emplace_back(block.block);
  MergeText second;
  MergeText third;
  ASSERT_TRUE(inputs.Begin(second));
  ASSERT_TRUE(inputs.Begin(third));
  EXPECT_TRUE(second.block.empty() && third.block.empty());
  inputs.Read(third);
  inputs.Read(second);
  blocks.emplace_back(second.block);
  blocks.emplace_back(third.block);
  std::string text;
  for (const std::string& each : blocks) {
    text += each;
  }
  EXPECT_EQ(text, Lines('a', 100).substr(0, text.size()));
  EXPECT_GT(text.size(), 2 * kBlockSize);
  EXPECT_EQ(text + ReadAll(inputs), Lines('a', 100));
}

TEST_F(MergeInputsTest, BreaksOffWhereARangeCannotBeRead) {
  Add({Lines('a', 5)});
  Add({Lines('b', 100), 200});
  Add({Lines('c', 5)});
  MergeInputs& inputs = Open();
  const std::string text = ReadAll(inputs);
  EXPECT_TRUE(text.starts_with(Lines('a', 5) + "b0\n")) << text;
  EXPECT_EQ(text.find('c'), std::string::npos);
  EXPECT_TRUE(inputs.HasBrokenOff());
  EXPECT_FALSE(inputs.IsSpent());
  EXPECT_EQ(told_, std::vector<std::string>{"b " + std::to_string(EIO)});
  EXPECT_TRUE(inputs_[1].is_left_out);
}

TEST_F(MergeInputsTest, GoesOnAfterAnInputThatHasGivenNothing) {
  Add({Lines('a', 5), std::nullopt, true});
  Add({Lines('b', 100), 0});
  Add({Lines('c', 5)});
  MergeInputs& inputs = Open();
  EXPECT_EQ(ReadAll(inputs), Lines('a', 5) + Lines('c', 5));
  EXPECT_FALSE(inputs.HasBrokenOff());
  EXPECT_EQ(told_, std::vector<std::string>{"b " + std::to_string(EIO)});
}

TEST_F(MergeInputsTest, IsSpentWhereAPipeWasReadBefore) {
  Add({Lines('a', 5), std::nullopt, true});
  Add({Lines('b', 100), 200});
  MergeInputs& inputs = Open();
  ReadAll(inputs);
  EXPECT_TRUE(inputs.HasBrokenOff());
  EXPECT_TRUE(inputs.IsSpent());
}

TEST_F(MergeInputsTest, SaysHowMuchIsKnownToCome) {
  Add({Lines('a', 100), std::nullopt, true});
  Add({Lines('b', 100)});
  MergeInputs& inputs = Open();
  EXPECT_EQ(inputs.SizeAhead(), 0U) << "a pipe does not say";
  while (inputs.Next().front() == 'a') {
  }
  EXPECT_GT(inputs.SizeAhead(), 200U);
  EXPECT_LT(inputs.SizeAhead(), Lines('b', 100).size());
}

}  // namespace

}  // namespace ptick
