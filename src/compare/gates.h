// The bars that a build may set: how much slower the new side may be.
#pragma once

#include <cstdint>
#include <vector>

#include "compare/comparison.h"
#include "value/value.h"

namespace ptick::compare {

/// Whether the total grew by more than that many per cent of the old one, and not by noise. A total
/// that is not tested is not taken as noise. For a comparison that is not normalized.
bool IsTotalSlower(const Comparison& comparison, const Value& percent);

/// Of `order`, which are places in Rows(), the rows that grew by more than that many per cent of
/// the old total, and not by noise. For kinds that are sampled.
std::vector<std::uint32_t> SlowerRows(const Comparison& comparison,
                                      const std::vector<std::uint32_t>& order,
                                      const Value& percent);

}  // namespace ptick::compare
