#include "generator/trace_keys.h"

#include <stdexcept>

namespace ptick::bench {

namespace {

// In a common set, one pair in this many is the file's own.
constexpr std::uint64_t kOwnShare = 64;

}  // namespace

TraceKeyChoice::TraceKeyChoice(const GenerateOptions& options, std::uint32_t file)
    : options_(options),
      file_(file),
      pairs_(std::uint64_t{options.programs} * options.last_line, options.seed),
      order_(options.lines, options.seed + file + 1) {
  if (PairsNeeded() > std::uint64_t{options.programs} * options.last_line) {
    throw std::invalid_argument("too few programs and lines for so many distinct keys");
  }
}

TraceKey TraceKeyChoice::At(std::uint32_t index, Random& random) const {
  if (options_.keys == TraceKeys::kRandom) {
    return {random.Below(options_.programs), random.Below(options_.last_line) + 1};
  }
  const std::uint64_t pair = pairs_.At(
      options_.keys == TraceKeys::kCommon ? CommonPair(index) : file_ * options_.lines + index);
  return {static_cast<std::uint32_t>(pair / options_.last_line),
          static_cast<std::uint32_t>(pair % options_.last_line) + 1};
}

std::uint64_t TraceKeyChoice::PairsNeeded() const {
  switch (options_.keys) {
    case TraceKeys::kRandom:
      break;
    case TraceKeys::kDistinct:
      return std::uint64_t{options_.files} * options_.lines;
    case TraceKeys::kCommon:
      return options_.lines + std::uint64_t{options_.files} * options_.lines / kOwnShare + 1;
  }
  return 0;
}

// The pairs below the number of lines are common to all files; each file replaces other ones by
// pairs of its own, from there on.
std::uint64_t TraceKeyChoice::CommonPair(std::uint32_t index) const {
  const std::uint64_t common = order_.At(index);
  if (common % kOwnShare != file_ % kOwnShare) {
    return common;
  }
  return options_.lines + (file_ * options_.lines + common) / kOwnShare;
}

}  // namespace ptick::bench
