#pragma once

#include <cstdint>

#include "generator/options.h"
#include "generator/random.h"
#include "generator/shuffle.h"

namespace ptick::bench {

/// The program, by number, and source line of a trace line.
struct TraceKey {
  std::uint32_t program;
  std::uint32_t line;
};

/// Chooses the keys of the trace lines of one file of a set.
class TraceKeyChoice {
 public:
  /// `file` counts from 0. Throws std::invalid_argument when there are fewer (program, line) pairs
  /// than distinct ones are needed.
  TraceKeyChoice(const GenerateOptions& options, std::uint32_t file);

  /// The key of trace line `index`, counted from 0.
  TraceKey At(std::uint32_t index, Random& random) const;

 private:
  std::uint64_t PairsNeeded() const;
  std::uint64_t CommonPair(std::uint32_t index) const;

  const GenerateOptions& options_;
  std::uint64_t file_;
  Shuffle pairs_;  ///< the same for all files
  Shuffle order_;  ///< of this file
};

}  // namespace ptick::bench
