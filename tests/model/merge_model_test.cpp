#include <gtest/gtest.h>

#include "model/comparison.h"
#include "model/model_cases.h"
#include "model/model_list.h"
#include "model/random_fields.h"
#include "model/random_profile.h"

namespace ptick::model {

namespace {

// The same profile once more with some lines changed, lost or gained: most keys come in the same
// order.
std::string NextRun(const std::string& text, RandomSource& random) {
  std::string next;
  for (const std::string& line : LinesOf(text)) {
    if (random.Chance(10)) {
      next += RandomProfileLine(random) + "\n";
    }
    if (random.Chance(80)) {
      next += line + "\n";
    } else if (random.Chance(50)) {
      next += line.substr(0, line.rfind('\t')) + "\t" + RandomTicks(random) + "\n";
    }
  }
  return next;
}

Texts RandomProfiles(RandomSource& random) {
  Texts texts(random.Between(2, 4));
  for (std::string& text : texts) {
    const bool again = &text != texts.data() && random.Chance(50);
    text = again ? NextRun(texts.front(), random) : RandomProfile(random);
  }
  if (random.Chance(20)) {
    texts.push_back(texts.front());
  }
  return texts;
}

TEST(MergeModel, AgreesOnRandomProfiles) {
  RunCases(1500, [](RandomSource& random) {
    return Case{RandomProfiles(random), MergeDifference};
  });
}

TEST(MergeModel, AgreesOnTheTablesOfMergedProfiles) {
  RunCases(1000, [](RandomSource& random) {
    const RunOptions options = RandomOptions(random);
    return Case{RandomProfiles(random),
                [=](const Texts& texts) { return MergedParseDifference(texts, options); }};
  });
}

// A merge hands out its lines in blocks of its own size; these are several of them.
TEST(MergeModel, AgreesWhereTheMergedLinesFillManyBlocks) {
  RunBigCase([](RandomSource& random) {
    Texts texts(2);
    for (int i = 0; i < 2000; ++i) {
      const std::string name(random.Between(100, 500), 'N');
      const std::string line = "PROFILE:trace\t" + name + std::to_string(i) + "\t1\t";
      texts[0] += line + "1\n";
      texts[1] += line + std::to_string(i % 7) + "\n";
    }
    return Case{texts, MergeDifference};
  });
}

}  // namespace

}  // namespace ptick::model
