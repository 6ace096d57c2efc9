#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "model/random_source.h"
#include "ptick/run_options.h"

namespace ptick::model {

/// The texts of the profiles that a case is about.
using Texts = std::vector<std::string>;

/// One case: profiles, and how what the program makes of them differs from the model; an empty text
/// where it does not.
struct Case {
  Texts profiles;
  std::function<std::string(const Texts&)> difference;
};

/// Runs cases made from seeds that follow each other. The first case that differs fails the test,
/// with its seed, the difference, and the profiles with every line removed that is not needed for
/// it. PTICK_MODEL_CASES sets the number of cases, PTICK_MODEL_SEED the first seed: the seed from a
/// failure and one case run that case alone.
void RunCases(std::uint64_t count, const std::function<Case(RandomSource&)>& make_case);

/// The same for a single big case, whatever PTICK_MODEL_CASES says.
void RunBigCase(const std::function<Case(RandomSource&)>& make_case);

/// The options that the per-line report and the keyboard script depend on.
RunOptions RandomOptions(RandomSource& random);
/// As they are written on the command line.
std::string OptionLetters(const RunOptions& options);

}  // namespace ptick::model
