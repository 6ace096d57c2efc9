#include <gtest/gtest.h>

#include "model/comparison.h"
#include "model/model_cases.h"
#include "model/random_profile.h"

namespace ptick::model {

namespace {

TEST(TablesModel, AgreesOnRandomProfiles) {
  RunCases(4000, [](RandomSource& random) {
    const RunOptions options = RandomOptions(random);
    const Delivery delivery = RandomDelivery(random);
    return Case{{RandomProfile(random)}, [=](const Texts& texts) {
                  const std::string difference = ParseDifference(texts.front(), options, delivery);
                  return difference.empty() ? "" : OptionLetters(options) + difference;
                }};
  });
}

}  // namespace

}  // namespace ptick::model
