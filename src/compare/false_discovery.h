// How sure one may be of many findings at once.
#pragma once

#include <span>
#include <vector>

namespace ptick::compare {

/// Those findings count whose false discovery rate is at most this: among all that count, about one
/// in twenty is chance.
constexpr double kFalseDiscoveryBar = 0.05;

/// The false discovery rate at which each of the p-values would just count, by Benjamini and
/// Hochberg, in the order of the p-values, which are from 0 to 1.
std::vector<double> FalseDiscoveryRates(std::span<const double> p_values);

}  // namespace ptick::compare
