#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "model/comparison.h"
#include "model/line_difference.h"
#include "model/model_cases.h"
#include "model/random_profile.h"

namespace ptick::model {

namespace {

// A profile with lines of many lengths, line ends of both kinds and none at the end.
std::string OddProfile() {
  std::string text = "PROFILE:trace\tA\t1\t5\n\n\nPROFILE:ticks\t40\xFEPROFILE:hertz\t100\n";
  for (std::size_t length = 1; length < 70; length += 7) {
    text += "PROFILE:trace\t" + std::string(length, 'N') + "\t" + std::to_string(length) + "\t3\n";
  }
  text += "\xFEjunk\nPROFILE:program\tPROG\tX\nPROFILE:trace\tLAST\t7\t5";
  return text;
}

std::string SplitDifference(const std::string& text, const Delivery& delivery) {
  RecordBlocks blocks(
      std::make_unique<PiecewiseRecord>(text, delivery.longest_piece, delivery.seed),
      delivery.block_size);
  return FirstDifference(JoinLines(LinesOf(text)), JoinLines(ReadLines(blocks)));
}

TEST(LineSplitting, TearsNoLineWhateverTheSizes) {
  const std::string text = OddProfile();
  for (std::size_t block = 1; block <= text.size() + 2; ++block) {
    for (const std::size_t piece : {std::size_t{1}, std::size_t{7}, block, text.size()}) {
      const Delivery delivery = {.block_size = block, .longest_piece = piece, .seed = block};
      ASSERT_EQ(SplitDifference(text, delivery), "") << "block " << block << " piece " << piece;
    }
  }
}

TEST(LineSplitting, LeavesTheSameTablesWhateverTheSizes) {
  const std::string text = OddProfile();
  const RunOptions options;
  for (std::size_t block = 1; block <= text.size() + 2; block += 3) {
    const Delivery delivery = {.block_size = block, .longest_piece = block, .seed = block};
    ASSERT_EQ(ParseDifference(text, options, delivery), "") << "block " << block;
  }
}

TEST(LineSplitting, AgreesOnRandomProfiles) {
  RunCases(1500, [](RandomSource& random) {
    const Delivery delivery = RandomDelivery(random);
    return Case{{RandomProfile(random)},
                [=](const Texts& texts) { return SplitDifference(texts.front(), delivery); }};
  });
}

}  // namespace

}  // namespace ptick::model
