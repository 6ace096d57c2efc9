// ptick-sample: a companion that counts the bytes of its inputs, in every form a result can have.
// It shows how a companion is made, and is what tests run.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "companion/linux/program.h"

namespace ptick::companion {

enum class SampleForm { kText, kJson, kCsv, kBytes };

struct SampleOptions {
  SampleForm form = SampleForm::kText;
  std::uint64_t repeat = 1;
  bool is_status_told = false;
  std::vector<std::string> inputs;
};

/// `options` must live as long as the program.
Program SampleProgram(SampleOptions& options);

}  // namespace ptick::companion
