#pragma once

#include <string>
#include <vector>

namespace ptick::model {

/// Where two texts of many lines differ first; empty when they are equal.
std::string FirstDifference(const std::string& model, const std::string& program);

/// Lines as one text.
std::string JoinLines(const std::vector<std::string>& lines);

}  // namespace ptick::model
