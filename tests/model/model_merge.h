#pragma once

#include <string>
#include <vector>

#include "model/model_list.h"

namespace ptick::model {

/// Profiles merged line by line, each given as its lines; the merged lines in their order.
std::vector<std::string> MergeModelLines(const std::vector<std::vector<std::string>>& profiles);

}  // namespace ptick::model
